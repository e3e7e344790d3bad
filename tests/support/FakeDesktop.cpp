#include "support/FakeDesktop.h"

namespace quillbay::testing {

void FakeAppearance::setDark(bool dark)
{
    if (std::exchange(m_dark, dark) != dark)
        Q_EMIT darkChanged();
}

void FakeAppearance::setReducedMotion(bool reduced)
{
    if (std::exchange(m_reducedMotion, reduced) != reduced)
        Q_EMIT reducedMotionChanged();
}

void FakeAppearance::setIconTheme(const QString &theme)
{
    if (std::exchange(m_iconTheme, theme) != theme)
        Q_EMIT iconThemeChanged();
}

int FakeFolderWatch::watch(const QStringList &watched)
{
    folders = watched;
    ++watchCount;
    return static_cast<int>(folders.size());
}

void FakeGlobalHotkey::registerKey(QKeyCombination wanted)
{
    key = wanted;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (refusal.isEmpty())
                Q_EMIT registered(QStringLiteral("test"), QStringLiteral("test key"));
            else
                Q_EMIT failed(refusal);
        },
        Qt::QueuedConnection);
}

void FakeWindowEffects::setBlurBehind(QWindow *window, const QRegion &region)
{
    blurRegions.emplace_back(window, region);
}

void FakeWindowEffects::bringToFront(QWindow *window, const QString &activationToken)
{
    broughtForward.emplace_back(window, activationToken);
}

void FakeApplicationService::activate(const QString &token)
{
    deliver([this, token] { Q_EMIT activated(token); });
}

void FakeApplicationService::open(const QStringList &urls)
{
    deliver([this, urls] {
        Q_EMIT opened(urls);
        Q_EMIT activated({});
    });
}

void FakeApplicationService::requestAction(const QString &action, const QVariantList &parameters)
{
    deliver([this, action, parameters] { Q_EMIT actionRequested(action, parameters); });
}

platform::ApplicationService::Claim FakeApplicationService::claim(const QStringList &urls)
{
    claimedUrls = urls;
    if (answer == Claim::Primary && !urls.isEmpty())
        open(urls);
    return answer;
}

void FakeApplicationService::start()
{
    started = true;
    for (const auto &call : std::exchange(m_waiting, {}))
        call();
}

void FakeApplicationService::deliver(std::function<void()> call)
{
    if (started)
        call();
    else
        m_waiting.push_back(std::move(call));
}

} // namespace quillbay::testing

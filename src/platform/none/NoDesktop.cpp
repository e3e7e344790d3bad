#include "platform/none/NoDesktop.h"

namespace quillbay::platform {

ApplicationService::Claim NoApplicationService::claim(const QStringList &)
{
    return Claim::Primary;
}

int NoFolderWatch::watch(const QStringList &)
{
    return 0;
}

void NoRecentDocuments::query(double, int)
{
    QMetaObject::invokeMethod(
        this,
        [this, query = ++m_query] {
            if (query == m_query)
                Q_EMIT gathered({});
        },
        Qt::QueuedConnection);
}

void NoGlobalHotkey::registerKey(QKeyCombination)
{
    QMetaObject::invokeMethod(
        this, [this] { Q_EMIT failed(QStringLiteral("this desktop has no global keys")); },
        Qt::QueuedConnection);
}

void NoWindowEffects::setBlurBehind(QWindow *, const QRegion &) {}

void NoWindowEffects::bringToFront(QWindow *window, const QString &)
{
    if (window)
        showInFront(*window);
}

} // namespace quillbay::platform

#include "platform/linux/colors/KWinColorSampler.h"

#include <QColor>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <limits>
#include <utility>

namespace quillbay::platform {

namespace {

ColorSample fromAnswer(const QDBusMessage &answer)
{
    ColorSample sample;
    if (answer.type() != QDBusMessage::ReplyMessage) {
        // "Cancelled", or "Running" when another program is picking: the person has seen the picker.
        if (answer.errorName().startsWith(QLatin1String("org.kde.kwin.ColorPicker.Error.")))
            sample.outcome = ColorSample::Outcome::Cancelled;
        sample.reason = QStringLiteral("%1: %2").arg(answer.errorName(), answer.errorMessage());
        return sample;
    }
    if (answer.signature() != QLatin1String("(u)")) {
        sample.reason = QStringLiteral("the compositor's picker gave no colour");
        return sample;
    }
    const auto argument = answer.arguments().constFirst().value<QDBusArgument>();
    QRgb color = 0;
    argument.beginStructure();
    argument >> color;
    argument.endStructure();
    return {
        ColorSample::Outcome::Picked, qRed(color) / 255.0, qGreen(color) / 255.0, qBlue(color) / 255.0, {}};
}

} // namespace

KWinColorSampler::KWinColorSampler(const QDBusConnection &bus)
    : m_bus(bus)
{
}

void KWinColorSampler::sample(Finished finished)
{
    if (m_finished)
        return;
    m_finished = std::move(finished);
    QMetaObject::invokeMethod(this, &KWinColorSampler::ask, Qt::QueuedConnection);
}

void KWinColorSampler::ask()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(QStringLiteral("org.kde.KWin"), QStringLiteral("/ColorPicker"),
                                       QStringLiteral("org.kde.kwin.ColorPicker"), QStringLiteral("pick"));
    call.setAutoStartService(false);
    // The answer comes when the person has picked.
    constexpr int untilAnswered = std::numeric_limits<int>::max();
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, untilAnswered), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<> reply = *watcher;
        std::exchange(m_finished, {})(fromAnswer(reply.reply()));
    });
}

} // namespace quillbay::platform

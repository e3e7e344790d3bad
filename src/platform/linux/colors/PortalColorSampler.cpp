#include "platform/linux/colors/PortalColorSampler.h"

#include "platform/linux/desktop/Portal.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QWindow>

#include <utility>

namespace quillbay::platform {

namespace {

const QString screenshotInterface = QStringLiteral("org.freedesktop.portal.Screenshot");

// Of a Response.
constexpr uint granted = 0;
constexpr uint cancelled = 1;

/// As portals want the window that asks; they take none as well.
QString parentWindow()
{
    const QWindow *window = QGuiApplication::focusWindow();
    if (!window || QGuiApplication::platformName() != QLatin1String("xcb"))
        return {};
    return QStringLiteral("x11:%1").arg(window->winId(), 0, 16);
}

/// The three channels, D-Bus type `(ddd)`.
bool readColor(const QVariant &value, ColorSample &sample)
{
    if (!value.canConvert<QDBusArgument>())
        return false;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return false;
    argument.beginStructure();
    argument >> sample.red >> sample.green >> sample.blue;
    argument.endStructure();
    return true;
}

} // namespace

PortalColorSampler::PortalColorSampler(const QDBusConnection &bus)
    : m_bus(bus)
{
    m_portal.setConnection(m_bus);
    m_portal.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_portal, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        ColorSample sample;
        if (m_isTaken)
            sample.outcome = ColorSample::Outcome::Cancelled;
        sample.reason = QStringLiteral("the desktop portal has ended");
        finish(sample);
    });
}

PortalColorSampler::~PortalColorSampler()
{
    if (m_request.isEmpty())
        return;
    QDBusMessage close = QDBusMessage::createMethodCall(portal::service, m_request, portal::requestInterface,
                                                        QStringLiteral("Close"));
    close.setAutoStartService(false);
    m_bus.send(close);
}

void PortalColorSampler::sample(Finished finished)
{
    if (m_finished)
        return;
    m_finished = std::move(finished);
    QMetaObject::invokeMethod(this, &PortalColorSampler::ask, Qt::QueuedConnection);
}

void PortalColorSampler::ask()
{
    if (!m_bus.isConnected()) {
        finish({ColorSample::Outcome::Unavailable, 0, 0, 0, QStringLiteral("there is no session bus")});
        return;
    }
    const QString token = portal::newToken();
    m_request = portal::requestPath(m_bus, token);
    m_bus.connect(QString(), m_request, portal::requestInterface, QStringLiteral("Response"), this,
                  SLOT(onResponse(uint, QVariantMap)));
    m_portal.addWatchedService(portal::service);
    m_isTaken = false;

    QDBusMessage call = QDBusMessage::createMethodCall(portal::service, portal::path, screenshotInterface,
                                                       QStringLiteral("PickColor"));
    call << parentWindow() << QVariantMap{{QStringLiteral("handle_token"), token}};
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, request = m_request] {
        watcher->deleteLater();
        if (request != m_request)
            return;
        const QDBusPendingReply<> reply = *watcher;
        if (reply.isError())
            refused(reply.error());
        else
            m_isTaken = true;
    });
}

void PortalColorSampler::onResponse(uint code, const QVariantMap &results)
{
    ColorSample sample;
    if (code == cancelled)
        sample.outcome = ColorSample::Outcome::Cancelled;
    else if (code == granted && readColor(results.value(QStringLiteral("color")), sample))
        sample.outcome = ColorSample::Outcome::Picked;
    else
        sample.reason = QStringLiteral("the desktop portal gave no colour");
    finish(sample);
}

void PortalColorSampler::refused(const QDBusError &error)
{
    finish({ColorSample::Outcome::Unavailable, 0, 0, 0,
            QStringLiteral("%1: %2").arg(error.name(), error.message())});
}

void PortalColorSampler::finish(const ColorSample &sample)
{
    if (!m_request.isEmpty())
        m_bus.disconnect(QString(), m_request, portal::requestInterface, QStringLiteral("Response"), this,
                         SLOT(onResponse(uint, QVariantMap)));
    m_request.clear();
    m_portal.setWatchedServices({});
    if (m_finished)
        std::exchange(m_finished, {})(sample);
}

} // namespace quillbay::platform

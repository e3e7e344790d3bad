#include "platform/linux/launching/DBusActivation.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <algorithm>
#include <utility>

namespace quillbay::platform {

namespace {

constexpr qsizetype longestBusName = 255;

bool isNameCharacter(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= u'a' && code <= u'z') || (code >= u'A' && code <= u'Z') ||
           (code >= u'0' && code <= u'9') || code == u'_' || code == u'-';
}

bool isNameElement(const QString &element)
{
    return !element.isEmpty() && !(element.at(0) >= u'0' && element.at(0) <= u'9') &&
           std::all_of(element.begin(), element.end(), isNameCharacter);
}

ActivationAnswer meaningOf(const QDBusError &error)
{
    if (!error.isValid())
        return ActivationAnswer::Taken;
    const bool silent = error.type() == QDBusError::NoReply || error.type() == QDBusError::Timeout ||
                        error.type() == QDBusError::TimedOut;
    return silent ? ActivationAnswer::Silent : ActivationAnswer::Refused;
}

} // namespace

bool isActivatableName(const QString &identifier)
{
    const QStringList elements = identifier.split(u'.');
    return elements.size() > 1 && identifier.size() <= longestBusName &&
           std::all_of(elements.begin(), elements.end(), isNameElement);
}

QString activationObjectPath(const QString &identifier)
{
    QString path = identifier;
    path.replace(u'.', u'/').replace(u'-', u'_');
    return u'/' + path;
}

void activateByBus(const QDBusConnection &bus, const QString &identifier, const ActivationToken &token,
                   QObject *context, std::function<void(ActivationAnswer, const QString &)> answer)
{
    QVariantMap platformData;
    if (!token.startupId.isEmpty())
        platformData.insert(QStringLiteral("desktop-startup-id"), token.startupId);
    if (!token.activationToken.isEmpty())
        platformData.insert(QStringLiteral("activation-token"), token.activationToken);
    QDBusMessage call = QDBusMessage::createMethodCall(identifier, activationObjectPath(identifier),
                                                       QStringLiteral("org.freedesktop.Application"),
                                                       QStringLiteral("Activate"));
    call << platformData;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [answer = std::move(answer)](QDBusPendingCallWatcher *ended) {
                         ended->deleteLater();
                         const QDBusError error = ended->error();
                         answer(meaningOf(error), error.message());
                     });
}

} // namespace quillbay::platform

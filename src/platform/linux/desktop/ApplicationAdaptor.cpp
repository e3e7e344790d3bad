#include "platform/linux/desktop/ApplicationAdaptor.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusVariant>

#include <algorithm>
#include <utility>

namespace quillbay::platform {

namespace {

constexpr int maximumVariantDepth = 64;

QVariant plainValue(QVariant value)
{
    for (int depth = 0; value.metaType() == QMetaType::fromType<QDBusVariant>(); ++depth) {
        if (depth == maximumVariantDepth)
            return {};
        value = QVariant(value.value<QDBusVariant>().variant());
    }
    return value.metaType() == QMetaType::fromType<QDBusArgument>() ? QVariant() : value;
}

QString tokenOf(const QVariantMap &platformData)
{
    for (const char *key : {"activation-token", "desktop-startup-id"}) {
        const QVariant value = plainValue(platformData.value(QLatin1String(key)));
        if (value.typeId() != QMetaType::QString)
            continue;
        const QString token = value.toString();
        if (!token.isEmpty() && token.size() <= maximumTokenLength)
            return token;
    }
    return {};
}

bool isTooLong(const QString &text)
{
    return text.size() > maximumTextLength;
}

} // namespace

ApplicationAdaptor::ApplicationAdaptor(QObject *exported, const QDBusConnection &bus, Take take)
    : QDBusAbstractAdaptor(exported)
    , m_bus(bus)
    , m_take(std::move(take))
{
}

void ApplicationAdaptor::Activate(const QVariantMap &platformData, const QDBusMessage &message)
{
    hand({}, platformData, message);
}

void ApplicationAdaptor::Open(const QStringList &uris, const QVariantMap &platformData,
                              const QDBusMessage &message)
{
    if (uris.size() > maximumUrls || std::any_of(uris.begin(), uris.end(), isTooLong)) {
        refuse(message, QStringLiteral("too many or too long URLs"));
        return;
    }
    ApplicationCall call;
    call.kind = ApplicationCall::Kind::Open;
    call.urls = uris;
    hand(std::move(call), platformData, message);
}

void ApplicationAdaptor::ActivateAction(const QString &action, const QVariantList &parameters,
                                        const QVariantMap &platformData, const QDBusMessage &message)
{
    if (isTooLong(action) || parameters.size() > maximumParameters) {
        refuse(message, QStringLiteral("too many parameters or too long a name"));
        return;
    }
    ApplicationCall call;
    call.kind = ApplicationCall::Kind::Action;
    call.action = action;
    for (const QVariant &parameter : parameters)
        call.parameters.append(plainValue(parameter));
    hand(std::move(call), platformData, message);
}

void ApplicationAdaptor::hand(ApplicationCall call, const QVariantMap &platformData,
                              const QDBusMessage &message)
{
    call.activationToken = tokenOf(platformData);
    if (!m_take(std::move(call)))
        refuse(message, QStringLiteral("too many calls are waiting"));
}

void ApplicationAdaptor::refuse(const QDBusMessage &message, const QString &text)
{
    message.setDelayedReply(true);
    if (message.isReplyRequired() && !m_bus.send(message.createErrorReply(QDBusError::LimitsExceeded, text)))
        qWarning("A refused call could not be answered: %s", qUtf8Printable(text));
}

} // namespace quillbay::platform

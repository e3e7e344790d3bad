#include "platform/linux/launching/ApplicationScope.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QList>
#include <QLoggingCategory>

namespace quillbay::platform {

struct UnitProperty
{
    QString name;
    QDBusVariant value;
};

struct AuxiliaryUnit
{
    QString name;
    QList<UnitProperty> properties;
};

static QDBusArgument &operator<<(QDBusArgument &argument, const UnitProperty &property)
{
    argument.beginStructure();
    argument << property.name << property.value;
    argument.endStructure();
    return argument;
}

static const QDBusArgument &operator>>(const QDBusArgument &argument, UnitProperty &property)
{
    argument.beginStructure();
    argument >> property.name >> property.value;
    argument.endStructure();
    return argument;
}

static QDBusArgument &operator<<(QDBusArgument &argument, const AuxiliaryUnit &unit)
{
    argument.beginStructure();
    argument << unit.name << unit.properties;
    argument.endStructure();
    return argument;
}

static const QDBusArgument &operator>>(const QDBusArgument &argument, AuxiliaryUnit &unit)
{
    argument.beginStructure();
    argument >> unit.name >> unit.properties;
    argument.endStructure();
    return argument;
}

namespace {

Q_LOGGING_CATEGORY(lcScope, "quillbay.launching.scope", QtWarningMsg)

constexpr qsizetype longestUnitName = 255;

void registerTypes()
{
    static const bool once = [] {
        qDBusRegisterMetaType<UnitProperty>();
        qDBusRegisterMetaType<QList<UnitProperty>>();
        qDBusRegisterMetaType<AuxiliaryUnit>();
        qDBusRegisterMetaType<QList<AuxiliaryUnit>>();
        return true;
    }();
    Q_UNUSED(once)
}

bool isPlain(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           byte == '_' || byte == '.' || byte == ':';
}

// Stops before the byte whose escape would pass the limit, so that no escape is cut in two.
QByteArray escaped(const QByteArray &text, qsizetype limit)
{
    QByteArray result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char byte = text.at(i);
        const bool plain = isPlain(byte) && !(byte == '.' && i == 0);
        const QByteArray piece = plain ? QByteArray(1, byte) : "\\x" + QByteArray(1, byte).toHex();
        if (result.size() + piece.size() > limit)
            break;
        result += piece;
    }
    return result;
}

} // namespace

QString scopeName(const QString &identifier, qint64 pid)
{
    const QByteArray head = "app-quillbay-";
    const QByteArray tail = '-' + QByteArray::number(pid) + ".scope";
    return QString::fromLatin1(
        head + escaped(identifier.toUtf8(), longestUnitName - head.size() - tail.size()) + tail);
}

void moveToScope(const QDBusConnection &bus, const QString &identifier, qint64 pid)
{
    if (!bus.isConnected())
        return;
    registerTypes();
    const auto property = [](const char *name, const QVariant &value) {
        return UnitProperty{QString::fromLatin1(name), QDBusVariant(value)};
    };
    const QList<UnitProperty> properties{
        property("PIDs", QVariant::fromValue(QList<uint>{static_cast<uint>(pid)})),
        property("CollectMode", QStringLiteral("inactive-or-failed")),
        property("Slice", QStringLiteral("app.slice")),
    };
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.systemd1"), QStringLiteral("/org/freedesktop/systemd1"),
        QStringLiteral("org.freedesktop.systemd1.Manager"), QStringLiteral("StartTransientUnit"));
    call << scopeName(identifier, pid) << QStringLiteral("fail") << QVariant::fromValue(properties)
         << QVariant::fromValue(QList<AuxiliaryUnit>());
    call.setAutoStartService(false);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), QCoreApplication::instance());
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher, [](QDBusPendingCallWatcher *ended) {
            ended->deleteLater();
            if (ended->isError())
                qCDebug(lcScope) << "no scope for the launched application:" << ended->error().message();
        });
}

} // namespace quillbay::platform

Q_DECLARE_METATYPE(quillbay::platform::UnitProperty)
Q_DECLARE_METATYPE(quillbay::platform::AuxiliaryUnit)

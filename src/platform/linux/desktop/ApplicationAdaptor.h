#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <functional>

namespace quillbay::platform {

/// One call of `org.freedesktop.Application`, checked.
struct ApplicationCall
{
    enum class Kind { Activate, Open, Action };

    Kind kind = Kind::Activate;
    QStringList urls;        ///< Open: as sent; they may be anything.
    QString action;          ///< Action: its name.
    QVariantList parameters; ///< Action: plain values; a value of another type is an invalid variant.
    QString activationToken; ///< From the platform data; empty when there is none.
};

/// What a single call may carry. A call beyond it is answered with an error and has no effect.
inline constexpr int maximumUrls = 1000;
inline constexpr int maximumParameters = 64;
inline constexpr int maximumTextLength = 65536; ///< Of one URL or action name, in UTF-16 units.
inline constexpr int maximumTokenLength = 1024; ///< A longer token counts as none.

/// The interface `org.freedesktop.Application` on the bus, as the Desktop Entry specification describes it.
///
/// `bus` is the connection that it is registered on. It hands each checked call to `take`, which must return
/// at once: the caller's answer is sent after it. When `take` returns false the caller is told that too much
/// is waiting.
class ApplicationAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    using Take = std::function<bool(ApplicationCall)>;

    ApplicationAdaptor(QObject *exported, const QDBusConnection &bus, Take take);

public Q_SLOTS:
    // The names are those of the bus.
    void Activate(const QVariantMap &platformData, const QDBusMessage &message);
    void Open(const QStringList &uris, const QVariantMap &platformData, const QDBusMessage &message);
    void ActivateAction(const QString &action, const QVariantList &parameters,
                        const QVariantMap &platformData, const QDBusMessage &message);

private:
    void hand(ApplicationCall call, const QVariantMap &platformData, const QDBusMessage &message);
    void refuse(const QDBusMessage &message, const QString &text);

    QDBusConnection m_bus;
    Take m_take;
};

} // namespace quillbay::platform

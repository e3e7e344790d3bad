#pragma once

#include "platform/GlobalHotkey.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QVariantMap>

#include <functional>

class QDBusError;
class QDBusObjectPath;

namespace quillbay::platform {

/// The key from the desktop, through `org.freedesktop.portal.GlobalShortcuts`.
///
/// The portal is asked for a session, then to bind the key in it. The desktop may ask the user, may give
/// another key than the one asked for, and keeps the answer; `registered` names the key it gave. A refusal by
/// the user, a desktop without the interface, a session that the portal closes and a portal that ends are all
/// `failed`. Nothing waits: every call is asynchronous, and an answer may take as long as the user thinks.
class PortalGlobalHotkey final : public GlobalHotkey
{
    Q_OBJECT

public:
    explicit PortalGlobalHotkey(const QDBusConnection &bus, QObject *parent = nullptr);
    ~PortalGlobalHotkey() override;

    /// Whether there is a bus to ask over.
    bool isAvailable() const override;
    void registerKey(QKeyCombination key) override;

private Q_SLOTS:
    void onCreateSessionResponse(uint code, const QVariantMap &results, const QDBusMessage &message);
    void onBindResponse(uint code, const QVariantMap &results);
    void onActivated(const QDBusObjectPath &session, const QString &id, qulonglong time,
                     const QVariantMap &options);
    void onSessionClosed();

private:
    void sayWhoWeAre();
    void createSession();
    void bind();
    QString subscribe(const char *responseSlot);
    void call(const QDBusMessage &message, std::function<void()> then = {});
    void closeSession();
    void fail(const QString &reason);
    void failWith(const QDBusError &error);
    void failAsAnswered(uint code);

    QDBusConnection m_bus;
    QKeyCombination m_key;
    QString m_session; ///< Object path; empty without a session.
    QDBusServiceWatcher m_portal;
};

} // namespace quillbay::platform

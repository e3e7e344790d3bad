#pragma once

#include <QDBusArgument>
#include <QKeyCombination>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

namespace quillbay::platform {

/// One shortcut as `org.freedesktop.portal.GlobalShortcuts` passes it, D-Bus type `(sa{sv})`. Properties in
/// use: `description`, `preferred_trigger` on the way there, `trigger_description` on the way back.
struct PortalShortcut
{
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut);
const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut);

/// The key in the form of the desktops' shortcuts specification: "CTRL+ALT+n". Null for a key that is no
/// letter, digit or function key.
QString portalTrigger(QKeyCombination key);

} // namespace quillbay::platform

Q_DECLARE_METATYPE(quillbay::platform::PortalShortcut)

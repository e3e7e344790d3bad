#pragma once

#include "platform/Appearance.h"
#include "platform/linux/desktop/DesktopSettings.h"

#include <QDBusConnection>
#include <QVariant>

#include <array>
#include <chrono>

class QDBusMessage;

namespace quillbay::platform {

/// Looks as `org.freedesktop.portal.Settings` tells them: colour scheme and reduced motion of
/// `org.freedesktop.appearance`, icon theme and animations of `org.gnome.desktop.interface`.
///
/// The values are asked for at once, again whenever the portal starts anew, and followed by its signal;
/// nothing waits. For each value that the portal does not know, or without a portal, the desktops'
/// configuration files stand in: they are read once, on a worker. A value of a wrong type counts as unknown.
class PortalAppearance final : public Appearance
{
    Q_OBJECT

public:
    /// `bus` need not be connected. `timeout` is how long a portal that does not answer is waited for before
    /// the files stand in; whatever it tells later still counts.
    explicit PortalAppearance(const QDBusConnection &bus,
                              std::chrono::milliseconds timeout = std::chrono::seconds(3),
                              QObject *parent = nullptr);

    bool isDark() const override { return m_state.dark; }
    bool reducedMotion() const override { return m_state.reducedMotion; }
    QString iconTheme() const override { return m_state.iconTheme; }

private:
    static constexpr std::size_t settingCount = 4;

    struct State
    {
        bool dark = false;
        bool reducedMotion = false;
        QString iconTheme;
    };

    void followPortal();
    void readAll();
    void read(std::size_t setting);
    void store(std::size_t setting, const QVariant &value);
    void readFiles();
    void publish();

private Q_SLOTS:
    void onSettingChanged(const QDBusMessage &message);

private:
    QDBusConnection m_bus;
    std::chrono::milliseconds m_timeout;
    QString m_portal; ///< Unique bus name of the running portal; only its signals count.
    std::array<QVariant, settingCount> m_told; ///< Checked; invalid where the portal does not know.
    DesktopSettingsSource m_filesSource;
    DesktopSettings m_files;
    bool m_filesAsked = false;
    State m_state;
};

} // namespace quillbay::platform

#include "platform/linux/packages/RemovalRules.h"

#include <QLatin1String>

#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace quillbay::platform {

namespace {

/// Names are divided by blanks; each table is for all distributions at once.
using Names = std::string_view;

constexpr Names EverySession =
    "xorg xserver-xorg xserver-xorg-core xorg-x11-server-Xorg xorg-x11-server-common xorg-server xwayland "
    "xorg-x11-server-Xwayland xserver-xorg-input-all gdm gdm3 sddm lightdm lxdm xdm wdm slim nodm greetd ly "
    "dbus dbus-bin dbus-daemon dbus-broker dbus-user-session dbus-session-bus-common libpam-systemd elogind";

struct Desktop
{
    QLatin1String name; ///< As in `XDG_CURRENT_DESKTOP`, without regard to case.
    Names packages;
};

constexpr std::array<Desktop, 11> Desktops = {{
    {QLatin1String("GNOME"),
     "gnome gnome-core gnome-session gnome-session-bin gnome-session-common gnome-session-wayland-session "
     "gnome-session-xsession gnome-shell gnome-shell-common gnome-settings-daemon mutter mutter-common "
     "task-gnome-desktop"},
    {QLatin1String("ubuntu"),
     "ubuntu-desktop ubuntu-desktop-minimal ubuntu-session gnome-session gnome-session-bin gnome-shell "
     "gnome-shell-common gnome-settings-daemon mutter mutter-common"},
    {QLatin1String("KDE"),
     "kde-full kde-standard kde-plasma-desktop plasma-desktop plasma-workspace plasma-workspace-wayland "
     "plasma-session-wayland kwin kwin-x11 kwin-wayland kwin-common task-kde-desktop kubuntu-desktop"},
    {QLatin1String("XFCE"),
     "xfce4 xfce4-session xfce4-panel xfce4-settings xfwm4 xfdesktop xfdesktop4 task-xfce-desktop "
     "xubuntu-desktop xubuntu-core"},
    {QLatin1String("MATE"),
     "mate-desktop mate-desktop-environment mate-desktop-environment-core mate-session-manager mate-panel "
     "mate-settings-daemon marco task-mate-desktop ubuntu-mate-desktop"},
    {QLatin1String("X-Cinnamon"),
     "cinnamon cinnamon-core cinnamon-desktop-environment cinnamon-session cinnamon-settings-daemon muffin "
     "task-cinnamon-desktop"},
    {QLatin1String("LXDE"), "lxde lxde-core lxsession lxpanel openbox task-lxde-desktop"},
    {QLatin1String("LXQt"),
     "lxqt lxqt-core lxqt-session lxqt-panel openbox xfwm4 kwin-x11 task-lxqt-desktop lubuntu-desktop"},
    {QLatin1String("Budgie"),
     "budgie-desktop budgie-core budgie-desktop-environment magpie mutter ubuntu-budgie-desktop"},
    {QLatin1String("sway"), "sway"},
    {QLatin1String("Enlightenment"), "enlightenment"},
}};

/// What the running session may be made of where it does not name a desktop.
constexpr Names SingleManagers = "openbox i3 i3-wm fluxbox icewm awesome bspwm dwm herbstluftwm xmonad qtile "
                                 "weston labwc wayfire hyprland "
                                 "river";

bool contains(Names names, const QString &name)
{
    const std::string wanted = name.toStdString();
    while (!names.empty()) {
        const size_t end = std::min(names.find(' '), names.size());
        if (names.substr(0, end) == wanted)
            return true;
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return false;
}

bool isRunning(const Desktop &desktop, const QStringList &desktops)
{
    return std::any_of(desktops.begin(), desktops.end(), [&](const QString &name) {
        return name.compare(desktop.name, Qt::CaseInsensitive) == 0;
    });
}

bool isOfDesktop(const PackageFacts &package, const QStringList &desktops)
{
    const bool isKnown = std::any_of(Desktops.begin(), Desktops.end(),
                                     [&](const Desktop &desktop) { return isRunning(desktop, desktops); });
    for (const Desktop &desktop : Desktops) {
        if ((!isKnown || isRunning(desktop, desktops)) && contains(desktop.packages, package.name))
            return true;
    }
    return !isKnown && (contains(SingleManagers, package.name) ||
                        package.provides.contains(QStringLiteral("x-window-manager")) ||
                        package.provides.contains(QStringLiteral("x-session-manager")));
}

bool isOfEverySession(const PackageFacts &package)
{
    return contains(EverySession, package.name) ||
           package.provides.contains(QStringLiteral("x-display-manager"));
}

QString firstName(const QList<PackageFacts> &packages, const std::function<bool(const PackageFacts &)> &is)
{
    const auto found = std::find_if(packages.begin(), packages.end(), is);
    return found == packages.end() ? QString() : found->name;
}

} // namespace

QString refusalOf(const QList<PackageFacts> &packages, const QStringList &desktops,
                  const QSet<QString> &ownPackages)
{
    if (const QString name = firstName(packages, [](const PackageFacts &one) { return one.isEssential; });
        !name.isEmpty())
        return QStringLiteral("the system needs %1").arg(name);
    if (const QString name =
            firstName(packages, [&](const PackageFacts &one) { return ownPackages.contains(one.name); });
        !name.isEmpty())
        return QStringLiteral("Quillbay itself needs %1").arg(name);
    if (const QString name = firstName(
            packages,
            [&](const PackageFacts &one) { return isOfEverySession(one) || isOfDesktop(one, desktops); });
        !name.isEmpty())
        return QStringLiteral("the desktop needs %1").arg(name);
    return {};
}

} // namespace quillbay::platform

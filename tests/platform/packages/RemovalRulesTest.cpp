#include "platform/linux/packages/RemovalRules.h"

#include <gtest/gtest.h>

namespace quillbay::platform {
namespace {

PackageFacts facts(const char *name, bool isEssential = false, const QStringList &provides = {})
{
    return {QLatin1String(name), QLatin1String(name), isEssential, provides};
}

const QStringList xfce = {QStringLiteral("XFCE")};
const QStringList gnomeOfUbuntu = {QStringLiteral("ubuntu"), QStringLiteral("gnome")};
const QStringList unheardOf = {QStringLiteral("Acme")};

TEST(RemovalRules, LetOrdinaryPackagesGo)
{
    EXPECT_EQ(refusalOf({facts("geany"), facts("geany-plugins")}, xfce, {QStringLiteral("libqt6gui6")}),
              QString());
    EXPECT_EQ(refusalOf({facts("openbox")}, gnomeOfUbuntu, {}), QString());
    EXPECT_EQ(refusalOf({facts("gnome-shell"), facts("mutter")}, xfce, {}), QString());
    // A part of a name is not the name.
    EXPECT_EQ(refusalOf({facts("gnome-shell-extension-foo"), facts("kwin-addons"), facts("xor"), facts("")},
                        {}, {}),
              QString());
}

TEST(RemovalRules, RefuseWhatTheSystemOrThisProgramNeeds)
{
    EXPECT_TRUE(refusalOf({facts("foo"), facts("bash", true)}, xfce, {}).contains(QStringLiteral("bash")));
    EXPECT_TRUE(refusalOf({facts("foo"), facts("libqt6gui6")}, xfce, {QStringLiteral("libqt6gui6")})
                    .contains(QStringLiteral("libqt6gui6")));
}

TEST(RemovalRules, RefuseWhatWouldTakeTheRunningDesktop)
{
    const auto isRefused = [](const char *name, const QStringList &desktops) {
        return refusalOf({facts("foo"), facts(name)}, desktops, {}).contains(QLatin1String(name));
    };
    for (const char *name : {"lightdm", "gdm3", "xserver-xorg-core", "xwayland", "dbus-user-session"})
        EXPECT_TRUE(isRefused(name, xfce)) << name;
    EXPECT_TRUE(isRefused("xfwm4", xfce));
    EXPECT_TRUE(isRefused("task-xfce-desktop", xfce));
    EXPECT_TRUE(isRefused("gnome-shell", gnomeOfUbuntu));
    EXPECT_TRUE(isRefused("ubuntu-desktop", gnomeOfUbuntu));
    EXPECT_FALSE(refusalOf({facts("any", false, {QStringLiteral("x-display-manager")})}, xfce, {}).isEmpty());
}

TEST(RemovalRules, TakeEveryDesktopForTheRunningOneWhereItIsNotKnown)
{
    const PackageFacts manager = facts("some-wm", false, {QStringLiteral("x-window-manager")});
    for (const QStringList &desktops : {QStringList(), unheardOf}) {
        for (const char *name : {"gnome-shell", "plasma-workspace", "xfwm4", "openbox", "i3", "sway"})
            EXPECT_FALSE(refusalOf({facts(name)}, desktops, {}).isEmpty()) << name;
        EXPECT_FALSE(refusalOf({manager}, desktops, {}).isEmpty());
        EXPECT_TRUE(refusalOf({facts("geany")}, desktops, {}).isEmpty());
    }
    EXPECT_TRUE(refusalOf({manager}, xfce, {}).isEmpty());
}

} // namespace
} // namespace quillbay::platform

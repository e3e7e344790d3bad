#include "platform/linux/desktop/DesktopSettings.h"

#include "support/TestHome.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace quillbay::platform;
using quillbay::testing::TestHome;

namespace {

const QString gtk3 = QStringLiteral("gtk-3.0/settings.ini");
const QString gtk4 = QStringLiteral("gtk-4.0/settings.ini");

DesktopSettingsSource sourceIn(const TestHome &home, const QByteArray &gtkTheme = {}, bool kde = false)
{
    return {home.path(), gtkTheme, kde};
}

} // namespace

TEST(DesktopSettings, ReadsGtksFile)
{
    const auto dark = [](const QByteArray &lines) { return parseGtkSettings("[Settings]\n" + lines).dark; };
    EXPECT_EQ(dark("gtk-application-prefer-dark-theme = true\r\n"), true);
    EXPECT_EQ(dark("gtk-application-prefer-dark-theme=0"), false);
    EXPECT_EQ(dark("gtk-application-prefer-dark-theme=0\ngtk-theme-name=Adwaita-dark"), true);
    EXPECT_EQ(dark("gtk-theme-name=Adwaita"), false);
    EXPECT_EQ(dark("#gtk-theme-name=Adwaita-dark"), std::nullopt);
    EXPECT_EQ(parseGtkSettings("[Other]\ngtk-theme-name=Adwaita-dark").dark, std::nullopt);
    const DesktopSettings settings =
        parseGtkSettings("[Settings]\ngtk-icon-theme-name=Papirus\ngtk-enable-animations=0\n");
    EXPECT_EQ(settings.iconTheme, QStringLiteral("Papirus"));
    EXPECT_EQ(settings.reducedMotion, true);
}

TEST(DesktopSettings, ReadsKdesFile)
{
    const auto dark = [](const QByteArray &content) { return parseKdeGlobals(content).dark; };
    EXPECT_EQ(dark("[Colors:Window]\nBackgroundNormal=49,54,59\n"), true);
    EXPECT_EQ(dark("[Colors:Window]\nBackgroundNormal=239,240,241,200\n"), false);
    EXPECT_EQ(dark("[General]\nColorScheme=BreezeDark\n[Colors:Window]\nBackgroundNormal=300,x\n"), true);
    EXPECT_EQ(dark("[General]\nColorScheme=BreezeLight\n"), false);
    EXPECT_EQ(dark("[Colors:View]\nBackgroundNormal=0,0,0\n"), std::nullopt);
    const DesktopSettings settings =
        parseKdeGlobals("[Icons]\nTheme=breeze\n[KDE]\nAnimationDurationFactor=0\n");
    EXPECT_EQ(settings.iconTheme, QStringLiteral("breeze"));
    EXPECT_EQ(settings.reducedMotion, true);
}

TEST(DesktopSettings, RefusesThemeNamesThatArePaths)
{
    for (const char *name : {"", ".", "..", ".hidden", "a/b", "/etc", "../x"})
        EXPECT_FALSE(isThemeName(QLatin1String(name))) << name;
    EXPECT_FALSE(isThemeName(QString(256, QLatin1Char('a'))));
    EXPECT_TRUE(isThemeName(QStringLiteral("Adwaita.2 ünï")));
    EXPECT_TRUE(parseGtkSettings("[Settings]\ngtk-icon-theme-name=../../x\n").iconTheme.isEmpty());
}

TEST(DesktopSettings, EachSourceFillsWhatTheEarlierLeftOpen)
{
    const TestHome home;
    home.write(gtk4, "[Settings]\ngtk-theme-name=Light\n");
    home.write(gtk3, "[Settings]\ngtk-theme-name=Some-dark\ngtk-icon-theme-name=Gtk\n");
    home.write(QStringLiteral("kdeglobals"), "[Icons]\nTheme=Kde\n[General]\nColorScheme=BreezeDark\n");
    EXPECT_EQ(readDesktopSettings(sourceIn(home)),
              (DesktopSettings{false, std::nullopt, QStringLiteral("Gtk")}));
    EXPECT_EQ(readDesktopSettings(sourceIn(home, "Yaru:dark")).dark, true);
    EXPECT_EQ(readDesktopSettings(sourceIn(home, {}, true)),
              (DesktopSettings{true, std::nullopt, QStringLiteral("Kde")}));
}

TEST(DesktopSettings, ReadsRegularFilesOfSaneSizeOnly)
{
    const TestHome home;
    EXPECT_EQ(readDesktopSettings(sourceIn(home)), DesktopSettings());
    ASSERT_EQ(::mkfifo(QFile::encodeName(home.path(QStringLiteral("kdeglobals"))).constData(), 0600), 0);
    home.write(gtk4, QByteArray(300 * 1024, '\0') + "\n[Settings]\ngtk-theme-name=Late-dark\n");
    home.write(gtk3, "[Settings\n]gtk\n=\n==\n[]\n[Settings]\ngtk-theme-name=Fine-dark\n=x");
    EXPECT_EQ(readDesktopSettings(sourceIn(home)).dark, true);
    home.write(gtk3, "");
    EXPECT_EQ(readDesktopSettings(sourceIn(home)), DesktopSettings());
}

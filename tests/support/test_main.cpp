#include "support/TestHome.h"

#include <QGuiApplication>
#include <QLocale>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    qputenv("TZ", "UTC");
    for (const char *name :
         {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "XDG_CURRENT_DESKTOP", "DBUS_SESSION_BUS_ADDRESS"})
        qunsetenv(name);
    qputenv("LANG", "en_US.UTF-8");
    const quillbay::testing::TestHome home;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

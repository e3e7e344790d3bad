#include "uninstaller/RemovalGuard.h"

#include "support/HostileTree.h"
#include "support/TestHome.h"

#include <QFile>

#include <filesystem>

#include <gtest/gtest.h>

namespace quillbay {

TEST(RemovalGuard, FoldersAndAllAboveByWhateverName)
{
    const testing::TestHome made;
    const QByteArray home = QFile::encodeName(made.path());
    const auto folder = [&](const char *relative) {
        std::filesystem::create_directories((home + relative).toStdString());
        return home + relative;
    };
    folder("/.config/autostart");
    folder("/.config/program");
    folder("/.local/state/program");
    folder("/.local/share/Trash/files");
    folder("/.cache");
    folder("/.var/app/org.example.Program");
    // The data folder is elsewhere, by way of a link; and there is a link to the home.
    folder("/disk/data/inside");
    std::filesystem::create_directory_symlink((home + "/disk").toStdString(), (home + "/way").toStdString());
    std::filesystem::create_directory_symlink(home.toStdString(), (home + "/.config/me").toStdString());
    qputenv("XDG_DATA_HOME", home + "/way/data");

    const RemovalGuard guard = RemovalGuard::ofSession();
    for (const QByteArray &path :
         {QByteArray("/"), QByteArray("/etc"), QByteArray("/etc/xdg"), home, home.left(home.lastIndexOf('/')),
          home + "/.config", home + "/.config/autostart", home + "/.local", home + "/.local/state",
          home + "/.cache", home + "/.var", home + "/.var/app", home + "/way", home + "/way/data",
          home + "/disk", home + "/disk/data", home + "/.config/me/.config", home + "/.config/me/disk/data",
          home + "/run"})
        EXPECT_TRUE(guard.refuses(path)) << path.constData();
    for (const QByteArray &path :
         {home + "/.config/program", home + "/.local/state/program", home + "/disk/data/inside",
          home + "/way/data/inside", home + "/.var/app/org.example.Program", home + "/.config/me"})
        EXPECT_FALSE(guard.refuses(path)) << path.constData();
}

TEST(RemovalGuard, WhatIsNoPathIsRefused)
{
    const testing::TestHome made;
    const QByteArray home = QFile::encodeName(made.path());
    std::filesystem::create_directories((home + "/.config/program").toStdString());
    const RemovalGuard guard = RemovalGuard::ofSession();
    ASSERT_FALSE(guard.refuses(home + "/.config/program"));
    for (const QByteArray &path :
         {QByteArray(), QByteArray("."), QByteArray(".config/program"), home + "/.config/program/",
          home + "/.config/", home + "/.config/program/..", home + "/.config/./program",
          home + "//.config/program", home + "/.config/program/.", home + "/.config/nothing",
          home + QByteArray("/.config/program\0x", 18), home + "/.config/program/" + QByteArray(5000, 'x')})
        EXPECT_TRUE(guard.refuses(path)) << path.constData();
}

} // namespace quillbay

#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QDBusConnection>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

namespace quillbay::platform {

/// What the package services are asked through. A test gives its own.
struct PackageSurroundings
{
    /// Where the package managers' programs are looked for, first match first. Not the user's PATH: some of
    /// them run as administrator.
    QStringList toolFolders;
    /// `XDG_CURRENT_DESKTOP`, its elements.
    QStringList desktops;
    /// Folders of `.conf` files with names that rpm's front ends protect, one a line.
    QStringList protectionFolders;
    /// Where snapd keeps the images of snaps, each NAME_REVISION.snap.
    QString snapFolder;
    /// The home folder, with no slash at its end.
    QByteArray home;
    /// The system bus. Called on a worker's thread, may block there.
    std::function<QDBusConnection()> systemBus;
    /// The files that this process runs on: the program and its libraries, absolute paths.
    std::function<QByteArrayList()> ownFiles;

    std::chrono::milliseconds questionLimit = std::chrono::seconds(20);
    std::chrono::milliseconds simulationLimit = std::chrono::minutes(2);
    /// Long: the user may be away while the question for a password stands.
    std::chrono::milliseconds removalLimit = std::chrono::minutes(30);

    static PackageSurroundings ofSession();

    /// Absolute path of a program; empty where there is none.
    QString tool(const QString &name) const;
};

} // namespace quillbay::platform

#pragma once

#include "platform/ResidualRoots.h"

namespace quillbay::platform {

/// The base folders that the layout hangs on. A value: tests fill it by hand.
struct LinuxBaseFolders
{
    QByteArray home;
    QByteArray configHome; ///< `XDG_CONFIG_HOME`
    QByteArray dataHome;   ///< `XDG_DATA_HOME`
    QByteArray cacheHome;  ///< `XDG_CACHE_HOME`
    QByteArray stateHome;  ///< `XDG_STATE_HOME`
    /// Put in front of the paths that all users share; empty but for tests.
    QByteArray systemRoot;
    QList<QByteArray> others; ///< More folders that are never one application's.

    /// With the home folder's standard folders where the environment says nothing else.
    static LinuxBaseFolders inHome(const QByteArray &home);
    /// As the environment of this process says, the remaining XDG folders under `others`. Reads no file.
    static LinuxBaseFolders fromEnvironment();
};

/// Where applications leave files on a Linux desktop (XDG base directory and autostart specifications,
/// systemd, the crash stores of systemd and of apport, flatpak and snap). There are no group containers, and
/// no receipts: they would be the package database, which must stay.
///
/// Every folder that a step looks into is a shared one, so that no application of the name "autostart" or
/// "systemd" takes everybody's entries away.
ResidualLayout linuxResidualLayout(const LinuxBaseFolders &folders);

/// The user's own folders for documents, music and the like. Reads their configuration.
QList<QByteArray> userFolders();

/// The path without doubled slashes, "." and a slash at its end; empty unless it is absolute and has no "..".
QByteArray cleanFolderPath(const QByteArray &path);

} // namespace quillbay::platform

#pragma once

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace quillbay::platform {

/// Everything outside the files themselves that decides which applications there are and what they are
/// called. A value: tests fill it by hand, the program takes it from the process' environment once.
struct ApplicationEnvironment
{
    QString home;
    QString dataHome;     ///< `XDG_DATA_HOME`
    QStringList dataDirs; ///< `XDG_DATA_DIRS`, most important first
    /// Data folders to which package systems export entries; read last, where `dataDirs` does not name them.
    QStringList exportDirs;
    /// Folders of bundles that all users share; `~/Applications` is read after them.
    QStringList systemBundleDirs;
    /// `XDG_CURRENT_DESKTOP`, split.
    std::vector<std::string> currentDesktop;
    /// The locales a localised value is looked up by, best first: see `localeCandidates`.
    std::vector<std::string> locales;
    /// `PATH`, split; only absolute folders.
    std::vector<std::string> path;

    static ApplicationEnvironment fromEnvironment();

    /// `~/Applications`.
    QString userBundleDir() const;
    /// The `applications` folders, in the order in which an earlier one shadows a later one; none twice.
    QStringList entryDirs() const;
};

/// The names under which a localised key is looked up, best first, for the values of the environment
/// variables `LANGUAGE` (a list), `LC_ALL`, `LC_MESSAGES` and `LANG`; the first that is not empty decides.
/// `de_AT.UTF-8@euro` gives `de_AT@euro`, `de_AT`, `de@euro`, `de`: the order of the Desktop Entry
/// specification, without the encoding. Nothing for `C` and `POSIX`.
std::vector<std::string> localeCandidates(const std::string &language, const std::string &lcAll,
                                          const std::string &lcMessages, const std::string &lang);

} // namespace quillbay::platform

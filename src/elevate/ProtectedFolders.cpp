#include "elevate/ProtectedFolders.h"

#include "elevate/Entry.h"
#include "elevate/MountTable.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <pwd.h>

namespace quillbay::elevate {

namespace {

constexpr const char *systemFolders[] = {
    "/etc/xdg/autostart",
    "/etc/systemd/system",
    "/etc/systemd/user",
    "/etc/dbus-1",
    "/etc/polkit-1",
    "/var/crash",
    "/var/cache",
    "/var/lib/systemd/coredump",
    "/var/log",
    "/var/spool",
    "/usr/bin",
    "/usr/lib",
    "/usr/libexec",
    "/usr/local/bin",
    "/usr/local/share/applications",
    "/usr/sbin",
    "/usr/share/applications",
    "/usr/share/icons",
    "/Library/Application Support",
    "/System/Applications",
};

constexpr const char *systemTrees[] = {
    "/boot",
    "/dev",
    "/proc",
    "/sys",
    "/var/lib/dpkg",
    "/var/lib/apt",
    "/var/lib/rpm",
    "/usr/lib/sysimage",
    "/var/lib/flatpak",
    "/var/lib/snapd",
    "/var/lib/pacman",
};

// Where each is unless an environment variable says otherwise, and what several programs share inside.
constexpr const char *baseFolders[] = {
    "",
    "/.cache",
    "/.config/autostart",
    "/.config/systemd/user",
    "/.local/bin",
    "/.local/share/Trash/files",
    "/.local/share/Trash/info",
    "/.local/share/applications",
    "/.local/share/icons",
    "/.local/state",
    "/.var/app",
    "/Applications",
    "/Desktop",
    "/Documents",
    "/Downloads",
    "/Library/Application Support",
    "/Music",
    "/Pictures",
    "/Public",
    "/Templates",
    "/Videos",
    "/snap",
};

bool isDirectlyUnder(const std::string &path, const std::string &folder)
{
    return path.size() > folder.size() + 1 && path.compare(0, folder.size() + 1, folder + '/') == 0 &&
           path.find('/', folder.size() + 1) == std::string::npos;
}

} // namespace

ProtectedFolders standardFolders()
{
    return {{std::begin(systemFolders), std::end(systemFolders)},
            {std::begin(systemTrees), std::end(systemTrees)},
            {}};
}

void addHome(ProtectedFolders &folders, const std::string &home)
{
    if (!isPlainPath(home))
        return;
    std::vector<std::string> names = {home};
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(home.c_str(), nullptr), &std::free);
    if (resolved && home != resolved.get() && isPlainPath(resolved.get()))
        names.emplace_back(resolved.get());
    for (const std::string &name : names) {
        for (const char *base : baseFolders)
            folders.folders.push_back(name + base);
    }
    struct stat status = {};
    if (stat(home.c_str(), &status) == 0)
        folders.homes.push_back(markOf(status));
}

ProtectedFolders protectedFolders(unsigned user)
{
    ProtectedFolders result = standardFolders();
    setpwent();
    while (const passwd *account = getpwent())
        addHome(result, account->pw_dir);
    endpwent();
    if (const passwd *account = getpwuid(user))
        addHome(result, account->pw_dir);
    return result;
}

bool isProtected(const ProtectedFolders &folders, const std::string &path)
{
    if (!isPlainPath(path) || isDirectlyUnder(path, {}) || isDirectlyUnder(path, "/home"))
        return true;
    const auto isAbove = [&](const std::string &folder) { return isAtOrAbove(path, folder); };
    const auto isIn = [&](const std::string &tree) { return isAtOrAbove(tree, path); };
    if (std::any_of(folders.folders.begin(), folders.folders.end(), isAbove) ||
        std::any_of(folders.trees.begin(), folders.trees.end(), isAbove) ||
        std::any_of(folders.trees.begin(), folders.trees.end(), isIn))
        return true;
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 &&
           std::find(folders.homes.begin(), folders.homes.end(), markOf(status)) != folders.homes.end();
}

} // namespace quillbay::elevate

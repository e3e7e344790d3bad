#include "support/TreeSnapshot.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include <sys/stat.h>

namespace quillbay::testing {

namespace {

std::string describe(const std::filesystem::path &path)
{
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0)
        return "unreadable";
    std::ostringstream text;
    text << std::oct << status.st_mode << std::dec << ' ' << status.st_uid << ':' << status.st_gid << ' '
         << status.st_ino;
    // What is removed from a folder changes its time; the names in it have rows of their own.
    if (!S_ISDIR(status.st_mode))
        text << ' ' << status.st_mtim.tv_sec << '.' << status.st_mtim.tv_nsec;
    text << ' ';
    if (S_ISLNK(status.st_mode))
        text << std::filesystem::read_symlink(path).string();
    if (S_ISREG(status.st_mode)) {
        std::ifstream file(path, std::ios::binary);
        text << std::string(std::istreambuf_iterator<char>(file), {});
    }
    return text.str();
}

} // namespace

TreeSnapshot snapshotOf(const std::string &folder)
{
    TreeSnapshot result;
    result[folder] = describe(folder);
    if (!std::filesystem::is_directory(std::filesystem::symlink_status(folder)))
        return result;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
        result[entry.path().string()] = describe(entry.path());
    return result;
}

std::string difference(const TreeSnapshot &before, const TreeSnapshot &after)
{
    for (const auto &[path, description] : before) {
        const auto now = after.find(path);
        if (now == after.end())
            return "gone: " + path;
        if (now->second != description)
            return "changed: " + path + "\n  " + description + "\n  " + now->second;
    }
    for (const auto &[path, description] : after) {
        if (!before.contains(path))
            return "new: " + path;
    }
    return {};
}

} // namespace quillbay::testing

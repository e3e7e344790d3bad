#pragma once

#include "elevate/FileMark.h"

#include <string>
#include <vector>

namespace quillbay::elevate {

/// What root never removes or moves for anybody, whoever has agreed to it.
struct ProtectedFolders
{
    std::vector<std::string> folders; ///< Neither these nor anything above them. What is in them may go.
    std::vector<std::string> trees;   ///< Nor anything in these.
    std::vector<FileMark> homes;      ///< The home folders by what they are, under whatever name.
};

/// The folders that every system has: those of the file system's standard, the base folders of the XDG
/// specification, and the packages' own databases.
ProtectedFolders standardFolders();

/// Adds `home`, as it is named and with its links resolved, and the base folders in it where their defaults
/// are. The root folder is no home.
void addHome(ProtectedFolders &folders, const std::string &home);

/// `standardFolders` with the homes of all accounts that the system lists, and of account `user` (pkexec's
/// caller, which a directory service may not list).
ProtectedFolders protectedFolders(unsigned user);

/// Whether `path`, free of links, is to be left alone. So is everything directly under "/" and "/home", and
/// what is no plain path.
bool isProtected(const ProtectedFolders &folders, const std::string &path);

} // namespace quillbay::elevate

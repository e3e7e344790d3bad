#pragma once

#include "elevate/Entry.h"
#include "elevate/FileMark.h"
#include "support/HostileTree.h"
#include "support/TreeSnapshot.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace quillbay::testing {

/// A folder of the test's own with `outside`, which nothing may happen to, and `rows`.
class FileTest : public ::testing::Test
{
protected:
    FileTest()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillbay-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        outside = folder + "/outside";
        rows = folder + "/rows";
        std::filesystem::create_directory(rows);
        HostileTree(1, outside).makeOutside();
        m_before = snapshotOf(outside);
    }

    ~FileTest() override
    {
        std::error_code error;
        std::filesystem::remove_all(folder, error);
        EXPECT_FALSE(error) << error.message();
    }

    /// What happened outside; empty if nothing.
    std::string damage() const { return difference(m_before, snapshotOf(outside)); }

    static bool exists(const std::string &path)
    {
        struct stat status = {};
        return lstat(path.c_str(), &status) == 0;
    }

    static elevate::FileMark mark(const std::string &path)
    {
        struct stat status = {};
        EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
        return elevate::markOf(status);
    }

    static elevate::Entry entry(const std::string &path)
    {
        elevate::OpenedEntry opened = elevate::openEntry(path);
        EXPECT_TRUE(opened.outcome.done()) << path;
        return std::move(opened.entry);
    }

    std::string folder;
    std::string outside;
    std::string rows;

private:
    TreeSnapshot m_before;
};

} // namespace quillbay::testing

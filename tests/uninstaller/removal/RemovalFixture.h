#pragma once

#include "support/FakeRemoval.h"
#include "support/HostileTree.h"
#include "support/TreeSnapshot.h"
#include "uninstaller/PutBack.h"
#include "uninstaller/Removal.h"

#include <QStringList>

#include <functional>

#include <gtest/gtest.h>

namespace quillbay::testing {

/// A removal with the real files and the real Trash of the test program's home, and an elevation that the
/// test scripts: it refuses, unless `elevate` is set, which runs the real helper (as the user of the test).
class RemovalTest : public ::testing::Test
{
protected:
    RemovalTest();
    ~RemovalTest() override;

    static bool exists(const QByteArray &path);
    static RemovalItem item(const QByteArray &path, bool isUserDeletable = true, qint64 size = 1);
    /// A new file among the rows; its path.
    QByteArray file(const QByteArray &name, const QByteArray &content = "x") const;

    RemovalServices services();
    /// Off the main thread, whose event loop runs meanwhile.
    RemovalResult remove(const QList<RemovalItem> &items, DeletionMethod method);
    PutBackResult back(const Receipt &receipt);

    void elevate();
    /// Makes the Trash fail, as on a file system without one.
    void breakTrash();
    /// Whether GIO trashes in this folder at all; it does not on every file system.
    static bool hasTrash();
    QByteArrayList inTrash(const char *folder) const;
    /// The command lines that were asked for.
    QByteArrayList lines() const;

    /// What happened outside the rows; empty if nothing.
    std::string damage() const { return difference(m_before, snapshotOf(outside.toStdString())); }

    QByteArray home;
    QByteArray rows;
    QByteArray outside;
    QByteArray trashFolder;
    FakeFileRemoval files;
    FakeTrash trash;
    FakeElevation elevation;
    AdminPrivileges admin{elevation};
    std::function<bool(const QByteArray &)> isProtected = [](const QByteArray &) { return false; };
    std::stop_source stopSource;

private:
    void clear() const;
    void off(const std::function<void()> &work);

    TreeSnapshot m_before;
};

/// Runs the helper for a command, as pkexec would.
platform::ElevationResult runHelper(const platform::ElevatedCommand &command);

} // namespace quillbay::testing

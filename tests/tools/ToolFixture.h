#pragma once

#include "foundation/NotificationCenter.h"
#include "workspaces/WorkspaceManager.h"
#include "workspaces/WorkspaceStorage.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quillbay::testing {

/// What a tool works on: the storage of a fresh workspace, in preferences of the test's own.
class ToolFixture : public ::testing::Test
{
protected:
    /// What a program started now would find.
    WorkspaceStorage stored() { return {preferences, workspaces, notifications}; }

    /// Another workspace; `switchBack` returns to the first.
    void switchAway() { workspaces.createWorkspace(QStringLiteral("Other"), {}, {}); }
    void switchBack() { workspaces.setActiveWorkspaceID(workspaces.workspaces().first().id); }

    QTemporaryDir folder;
    PreferenceStore preferences{folder.filePath(QStringLiteral("preferences.sqlite"))};
    NotificationCenter notifications;
    WorkspaceManager workspaces{preferences, notifications};
    WorkspaceStorage storage{preferences, workspaces, notifications};
};

} // namespace quillbay::testing

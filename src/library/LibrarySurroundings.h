#pragma once

#include "foundation/PreferenceStore.h"

#include <functional>

namespace quillbay {

class NotificationCenter;
class WorkspaceManager;

namespace platform {
class ApplicationSource;
class FolderWatch;
class IconSource;
class RecentDocuments;
} // namespace platform

/// What the library (`AppFinder`) stands on. All of it must outlive the library.
///
/// What it stores are preferences, written at the moment of a change and read again rather than remembered:
/// the stored strings are the truth, and the published lists are made from them after each scan and each
/// change of workspace. Keys marked (w) carry the active workspace's suffix (`WorkspaceManager::key`).
///
/// | key | form | of |
/// |---|---|---|
/// | "recentApps" (w), "favoriteApps" (w) | array of strings | `recentApps`, `favoriteApps` |
/// | "AppFolders" (w) | data, see `encodeFolders` | `folders` |
/// | "unifiedGridOrder" (w) | array of strings, see `GridItemIdentifier` | `getUnifiedGridOrder` |
/// | "AllAppsSortOption" | string | `allAppsSortOption` |
/// | "AppFirstSeenDates" | dictionary of numbers, seconds since 1970 | `newlyAddedApps` |
/// | "NewlyAddedAppURLs" | array of strings | `newlyAddedApps` |
/// | "quillbay_hidden_apps" | array of strings, paths | `hiddenAppPaths` |
/// | "quillbay_hidden_folders" | array of strings, identifiers | `hiddenFolderIDs` |
struct LibrarySurroundings
{
    const platform::ApplicationSource &applications;
    platform::FolderWatch &folderWatch;
    platform::RecentDocuments &recentDocuments;
    const platform::IconSource &icons;
    PreferenceStore preferences;
    WorkspaceManager &workspaces;
    NotificationCenter &notifications;
    /// Seconds since 1970; the system's clock unless a test says otherwise. Also called from the scan's
    /// worker.
    std::function<double()> now = {};
};

} // namespace quillbay

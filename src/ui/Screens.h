#pragma once

#include "app/ExpandedCard.h"
#include "app/FolderContents.h"
#include "app/FolderTreeModel.h"
#include "app/GridDrops.h"
#include "app/HiddenCards.h"
#include "app/LibraryActions.h"
#include "app/UnifiedCards.h"
#include "app/WorkspaceListModel.h"
#include "ui/Incubation.h"
#include "ui/Uninstalling.h"

#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

class QQuickWindow;

namespace quillbay {

class NotificationCenter;
class QuillbayViewModel;
class Tools;
class Uninstaller;
class WorkspaceManager;

/// What the screens reach by name, with the objects that they alone need.
///
/// Must not outlive what it is given. Thread: main thread; one at a time.
class ScreenModels
{
public:
    ScreenModels(QuillbayViewModel &viewModel, WorkspaceManager &workspaces,
                 NotificationCenter &notifications, Uninstaller &uninstaller, Tools &tools);
    ~ScreenModels();
    ScreenModels(const ScreenModels &) = delete;
    ScreenModels &operator=(const ScreenModels &) = delete;

private:
    LibraryActions m_library;
    FolderTreeModel m_folderTree;
    WorkspaceListModel m_workspaces;
    GridDrops m_gridDrops;
    FolderContents m_folderContents;
    UnifiedCards m_cards;
    HiddenCards m_hiddenCards;
    ExpandedCard m_expandedCard;
    Uninstalling m_uninstalling;
};

/// What the screens are made of, read on the engine's own thread as soon as this exists: make it early, and
/// do something else meanwhile.
///
/// Thread: main thread; one at a time.
class ScreenTypes
{
public:
    ScreenTypes();
    ~ScreenTypes();
    ScreenTypes(const ScreenTypes &) = delete;
    ScreenTypes &operator=(const ScreenTypes &) = delete;

private:
    friend class Screens;

    QQmlEngine m_engine;
    Incubation m_incubation;
    QQmlComponent m_content;
};

/// All screens. Makes `ContentView` and hands its window out, not shown yet.
///
/// Making it takes turns of the event loop where the types have not all been read yet. Needs the `Theme`, and
/// like it must not outlive what it is given. Thread: main thread; one at a time.
class Screens
{
public:
    Screens(ScreenTypes &types, QuillbayViewModel &viewModel, WorkspaceManager &workspaces,
            NotificationCenter &notifications, Uninstaller &uninstaller, Tools &tools);
    ~Screens();
    Screens(const Screens &) = delete;
    Screens &operator=(const Screens &) = delete;

    /// Null when the screens could not be loaded; why has been printed then.
    QQuickWindow *window() const;

private:
    void loadToolsLater(Tools &tools);

    ScreenModels m_models;
    std::unique_ptr<QObject> m_content;
};

} // namespace quillbay

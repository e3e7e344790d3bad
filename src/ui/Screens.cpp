#include "ui/Screens.h"

#include "ui/QmlSingletons.h"
#include "ui/vocabulary/Symbols.h"

#include <QQuickWindow>

// Written by the build from the classes of the modules. Nothing else refers to it, and a linker takes from a
// static library only what is referred to.
void qml_register_types_Quillbay_Lock();
void qml_register_types_Quillbay_Ui();

namespace quillbay {

ScreenModels::ScreenModels(QuillbayViewModel &viewModel, WorkspaceManager &workspaces,
                           NotificationCenter &notifications, Uninstaller &uninstaller)
    : m_library(viewModel, workspaces)
    , m_folderTree(*viewModel.appFinder())
    , m_workspaces(workspaces)
    , m_gridDrops(viewModel)
    , m_folderContents(viewModel)
    , m_cards(viewModel, m_folderContents)
    , m_hiddenCards(viewModel, m_folderContents)
    , m_expandedCard(viewModel, m_folderContents)
    , m_uninstalling(viewModel, uninstaller)
{
    [[maybe_unused]] void (*volatile keep[])() = {&qml_register_types_Quillbay_Lock,
                                                  &qml_register_types_Quillbay_Ui};
    ViewModelSingleton::instance = &viewModel;
    NotificationsSingleton::instance = &notifications;
    LibrarySingleton::instance = &m_library;
    FolderTreeSingleton::instance = &m_folderTree;
    WorkspacesSingleton::instance = &m_workspaces;
    GridDropsSingleton::instance = &m_gridDrops;
    CardsSingleton::instance = &m_cards;
    HiddenCardsSingleton::instance = &m_hiddenCards;
    ExpandedCardSingleton::instance = &m_expandedCard;
    FolderContentsSingleton::instance = &m_folderContents;
    UninstallingSingleton::instance = &m_uninstalling;
}

ScreenModels::~ScreenModels() = default;

Screens::Screens(QuillbayViewModel &viewModel, WorkspaceManager &workspaces,
                 NotificationCenter &notifications, Uninstaller &uninstaller)
    : m_models(viewModel, workspaces, notifications, uninstaller)
{
    // Before there is any text: a font that comes later has all of it laid out anew.
    Symbols::family(SymbolFace::Regular);
    m_engine.load(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Quillbay/Ui/ContentView.qml")));
}

Screens::~Screens() = default;

QQuickWindow *Screens::window() const
{
    const QObjectList roots = m_engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
}

} // namespace quillbay

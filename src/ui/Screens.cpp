#include "ui/Screens.h"

#include "tools/Tools.h"
#include "ui/QmlSingletons.h"
#include "ui/ToolTypes.h"
#include "ui/vocabulary/Symbols.h"

#include <QQuickWindow>
#include <QTimer>

#include <chrono>

// Written by the build from the classes of the module. Nothing else refers to it, and a linker takes from a
// static library only what is referred to.
void qml_register_types_Quillbay_Ui();

namespace quillbay {

namespace {

/// From the first picture to the loading of what the tools keep, unless one is opened before.
constexpr std::chrono::seconds toolsDelay(2);

} // namespace

ScreenModels::ScreenModels(QuillbayViewModel &viewModel, WorkspaceManager &workspaces,
                           NotificationCenter &notifications, Uninstaller &uninstaller, Tools &tools)
    : m_library(viewModel, workspaces)
    , m_folderTree(*viewModel.appFinder())
    , m_workspaces(workspaces)
    , m_gridDrops(viewModel)
    , m_folderContents(*viewModel.appFinder())
    , m_cards(viewModel, m_folderContents)
    , m_hiddenCards(*viewModel.appFinder(), m_folderContents)
    , m_expandedCard(viewModel, m_folderContents)
    , m_uninstalling(viewModel, uninstaller)
{
    [[maybe_unused]] volatile auto keep = &qml_register_types_Quillbay_Ui;
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
    WorkspaceStorageSingleton::tools = &tools;
}

ScreenModels::~ScreenModels() = default;

Screens::Screens(QuillbayViewModel &viewModel, WorkspaceManager &workspaces,
                 NotificationCenter &notifications, Uninstaller &uninstaller, Tools &tools)
    : m_models(viewModel, workspaces, notifications, uninstaller, tools)
{
    // Before there is any text: a font that comes later has all of it laid out anew.
    Symbols::family(SymbolFace::Regular);
    m_engine.load(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Quillbay/Ui/ContentView.qml")));
    loadToolsLater(tools);
}

void Screens::loadToolsLater(Tools &tools)
{
    const auto load = [this, &tools] {
        QTimer::singleShot(toolsDelay, &m_engine, [&tools] { tools.storage(); });
    };
    if (QQuickWindow *shown = window()) {
        const auto type = Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection);
        QObject::connect(shown, &QQuickWindow::frameSwapped, &m_engine, load, type);
    }
}

Screens::~Screens() = default;

QQuickWindow *Screens::window() const
{
    const QObjectList roots = m_engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
}

} // namespace quillbay

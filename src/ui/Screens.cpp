#include "ui/Screens.h"

#include "tools/Tools.h"
#include "ui/QmlSingletons.h"
#include "ui/ToolTypes.h"
#include "ui/vocabulary/Symbols.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QEventLoop>
#include <QOpenGLContext>
#include <QQuickWindow>
#include <QTimer>

#include <chrono>

// Written by the build from the classes of the modules. Nothing else refers to it, and a linker takes from a
// static library only what is referred to.
void qml_register_types_Quillbay_Lock();
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
    WorkspaceStorageSingleton::tools = &tools;
}

ScreenModels::~ScreenModels() = default;

ScreenTypes::ScreenTypes()
    : m_content(&m_engine)
{
    QObject::connect(&m_engine, &QQmlEngine::exit, qApp, &QCoreApplication::exit, Qt::QueuedConnection);
    m_content.loadUrl(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Quillbay/Ui/ContentView.qml")),
                      QQmlComponent::Asynchronous);
    // Before there is any text: a font that comes later has all of it laid out anew.
    Symbols::family(SymbolFace::Regular);
}

ScreenTypes::~ScreenTypes() = default;

Screens::Screens(ScreenTypes &types, QuillbayViewModel &viewModel, WorkspaceManager &workspaces,
                 NotificationCenter &notifications, Uninstaller &uninstaller, Tools &tools)
    : m_models(viewModel, workspaces, notifications, uninstaller, tools)
{
    // The window would ask for both first thing; meanwhile the types are read. The way to screen readers
    // waits for answers of the bus, and the graphics driver takes as long to load as the types.
    QAccessible::setRootObject(qApp);
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        QOpenGLContext::supportsThreadedOpenGL();
    QQmlComponent &content = types.m_content;
    if (content.isLoading()) {
        QEventLoop loop;
        QObject::connect(&content, &QQmlComponent::statusChanged, &loop, &QEventLoop::quit);
        loop.exec();
    }
    m_content.reset(content.create());
    for (const QQmlError &error : content.errors())
        qWarning("%s", qUtf8Printable(error.toString()));
    // From here on: what is there at the start is all made at once.
    types.m_engine.setIncubationController(&types.m_incubation);
    loadToolsLater(tools);
}

void Screens::loadToolsLater(Tools &tools)
{
    QQuickWindow *shown = window();
    if (!shown)
        return;
    const auto load = [shown, &tools] {
        QTimer::singleShot(toolsDelay, shown, [&tools] { tools.loadStorage(); });
    };
    const auto type = Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection);
    QObject::connect(shown, &QQuickWindow::frameSwapped, shown, load, type);
}

Screens::~Screens() = default;

QQuickWindow *Screens::window() const
{
    return qobject_cast<QQuickWindow *>(m_content.get());
}

} // namespace quillbay

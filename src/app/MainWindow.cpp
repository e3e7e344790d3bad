#include "app/MainWindow.h"

#include "foundation/Console.h"
#include "platform/WindowEffects.h"

#include <QDir>
#include <QGuiApplication>
#include <QMetaProperty>
#include <QPointer>
#include <QQuickWindow>
#include <QRunnable>
#include <QSaveFile>
#include <QScreen>

namespace quillbay {

namespace {

/// How long a window that is moved or resized must rest before its place is written.
constexpr int restBeforeStoring = 400;

QRect preferredScreen(const QWindow &window)
{
    const QScreen *screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : QRect();
}

QList<QRect> allScreens()
{
    QList<QRect> geometries;
    for (const QScreen *screen : QGuiApplication::screens())
        geometries.append(screen->availableGeometry());
    return geometries;
}

/// Of the window's own, where it has a sidebar.
QMetaProperty sidebarWidthOf(const QQuickWindow &window)
{
    return window.metaObject()->property(window.metaObject()->indexOfProperty("sidebarWidth"));
}

bool writePicture(const QImage &picture, const QString &path, QString *reason)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !picture.save(&file, "PNG") || !file.commit()) {
        *reason = picture.isNull() ? QStringLiteral("there is no picture") : file.errorString();
        return false;
    }
    return true;
}

} // namespace

MainWindow::MainWindow(QQuickWindow &window, platform::WindowEffects &effects, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_effects(effects)
{
    m_writer.setMaxThreadCount(1);
    m_writer.setExpiryTimeout(1000);
    m_storeTimer.setSingleShot(true);
    m_storeTimer.setInterval(restBeforeStoring);
    connect(&m_storeTimer, &QTimer::timeout, this, &MainWindow::storePlacement);
    for (const auto change :
         {&QWindow::xChanged, &QWindow::yChanged, &QWindow::widthChanged, &QWindow::heightChanged})
        connect(&m_window, change, this, &MainWindow::rememberPlacement);
    connect(&m_window, &QWindow::windowStateChanged, this, &MainWindow::rememberPlacement);
    if (const QMetaProperty sidebar = sidebarWidthOf(m_window); sidebar.hasNotifySignal())
        connect(&m_window, sidebar.notifySignal(), this,
                metaObject()->method(metaObject()->indexOfSlot("rememberPlacement()")));
    connect(&m_window, &QWindow::activeChanged, this, [this] {
        if (m_window.isActive())
            Q_EMIT becameKey();
    });
    connect(qGuiApp, &QGuiApplication::aboutToQuit, this, &MainWindow::storePlacement);
}

MainWindow::~MainWindow()
{
    m_writer.waitForDone();
}

void MainWindow::setUp(bool launchedBefore)
{
    m_window.setMinimumSize(smallestWindow);
    const std::optional<WindowPlacement> stored = launchedBefore ? loadPlacement() : std::nullopt;
    m_placement =
        stored ? restoredPlacement(*stored, allScreens()) : firstPlacement(preferredScreen(m_window));
    if (m_placement.sidebarWidth)
        sidebarWidthOf(m_window).write(&m_window, *m_placement.sidebarWidth);
    m_window.resize(m_placement.size);
    if (m_placement.position && m_effects.canPlaceWindows())
        m_window.setPosition(*m_placement.position);
    if (m_placement.maximized)
        m_window.setWindowState(Qt::WindowMaximized);
    m_unsaved = false;
    m_storeTimer.stop();
}

void MainWindow::bringForward(const QString &activationToken)
{
    m_effects.bringToFront(&m_window, activationToken);
    if (m_window.isActive())
        Q_EMIT becameKey();
}

void MainWindow::hide()
{
    m_storeTimer.stop();
    storePlacement();
    m_window.hide();
}

WindowPlacement MainWindow::currentPlacement() const
{
    WindowPlacement placement = m_placement;
    placement.maximized = m_window.windowState() == Qt::WindowMaximized;
    if (const QVariant width = sidebarWidthOf(m_window).read(&m_window); width.isValid())
        placement.sidebarWidth = width.toInt();
    if (m_window.windowState() == Qt::WindowNoState) {
        placement.size = m_window.size();
        placement.position.reset();
        if (m_effects.canPlaceWindows())
            placement.position = m_window.position();
    }
    return placement;
}

void MainWindow::rememberPlacement()
{
    // Minimising and hiding say nothing about where the window belongs.
    if (!m_window.isVisible() || m_window.windowState() == Qt::WindowMinimized)
        return;
    m_unsaved = true;
    m_storeTimer.start();
}

void MainWindow::storePlacement()
{
    if (!m_unsaved)
        return;
    m_unsaved = false;
    const WindowPlacement now = currentPlacement();
    if (now == m_placement)
        return;
    m_placement = now;
    m_writer.start([now] {
        if (!savePlacement(now))
            printLine(QStringLiteral("⚠️ Failed to store the window's place"));
    });
}

void MainWindow::whenPainted(std::function<void()> done)
{
    // A frame that is being drawn now may lack what was just changed: wait for the next synchronisation, then
    // for the end of that frame.
    QQuickWindow *window = &m_window;
    QPointer<MainWindow> self(this);
    const auto afterSwap = [self, done = std::move(done)] {
        QMetaObject::invokeMethod(
            qGuiApp, [self, done] { self ? done() : void(); }, Qt::QueuedConnection);
    };
    m_window.scheduleRenderJob(QRunnable::create([window, afterSwap] {
                                   window->scheduleRenderJob(QRunnable::create(afterSwap),
                                                             QQuickWindow::AfterSwapStage);
                               }),
                               QQuickWindow::BeforeSynchronizingStage);
    m_window.update();
}

void MainWindow::savePicture(const QString &path)
{
    if (!QDir::isAbsolutePath(path) || !path.endsWith(QLatin1String(".png"))) {
        printLine(QStringLiteral("⚠️ Failed to save %1: an absolute path that ends in .png is needed")
                      .arg(path));
        return;
    }
    const QImage picture = m_window.grabWindow();
    m_writer.start([picture, path] {
        QString reason;
        if (writePicture(picture, path, &reason))
            printLine(QStringLiteral("🖼️ Saved %1").arg(path));
        else
            printLine(QStringLiteral("⚠️ Failed to save %1: %2").arg(path, reason));
    });
}

} // namespace quillbay

#include "tools/RulerManager.h"

#include "foundation/Console.h"
#include "platform/WindowEffects.h"
#include "tools/Clipboard.h"
#include "tools/Measurement.h"
#include "tools/RulerWindow.h"
#include "workspaces/WorkspaceStorage.h"

#include <QGuiApplication>
#include <QScreen>

namespace quillbay {

namespace {

constexpr int mostMeasurements = 10;
constexpr QRect usualScreen(0, 0, 1440, 900);

/// The screen with the window that has the keyboard.
QRect workedOn()
{
    const QWindow *focus = QGuiApplication::focusWindow();
    const QScreen *screen = focus ? focus->screen() : QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : usualScreen;
}

} // namespace

RulerManager::RulerManager(WorkspaceStorage &storage, const platform::WindowEffects &effects, QObject *parent)
    : ObservableObject(parent)
    , m_storage(storage)
    , m_effects(effects)
{
}

RulerManager::~RulerManager()
{
    // Not later: what its content shows may be gone by then.
    delete m_window.release();
}

void RulerManager::DeletedLater::operator()(RulerWindow *window) const
{
    // It may be closed by one of its own buttons.
    window->close();
    window->deleteLater();
}

void RulerManager::showRuler()
{
    if (m_window)
        return;
    const QRect screen = workedOn();
    Q_EMIT objectWillChange();
    m_window.reset(
        new RulerWindow(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Quillbay/Ui/RulerView.qml"))));
    const QSize size = m_window->size();
    m_window->setPosition(screen.x() + (screen.width() - size.width()) / 2,
                          screen.y() + (screen.height() - size.height()) / 2);
    connect(m_window.get(), &RulerWindow::liveResizeEnded, this, &RulerManager::windowDidEndLiveResize);
    // The desktop has ways of its own to close a window.
    connect(m_window.get(), &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible)
            closeRuler();
    });
    if (!m_effects.canShowThrough())
        m_window->setOpaque();
    m_window->show();
    m_window->requestActivate();
    if (!m_effects.canPlaceWindows())
        printLine(QStringLiteral("Ruler: this desktop places windows itself and may show others above it"));
    Q_EMIT isRulerShowingChanged();
    addMeasurement(size.width(), size.height());
}

void RulerManager::closeRuler()
{
    if (!m_window)
        return;
    Q_EMIT objectWillChange();
    m_window.reset();
    Q_EMIT isRulerShowingChanged();
}

void RulerManager::resizeRuler(qreal width, qreal height)
{
    if (!m_window)
        return;
    m_window->setSize(QSize(int(width), int(height)));
    addMeasurement(int(width), int(height));
}

void RulerManager::restore(const QString &measurement)
{
    copyToClipboard(measurement);
    if (const auto size = parseMeasurement(measurement))
        resizeRuler(size->width(), size->height());
}

void RulerManager::clearMeasurements()
{
    m_storage.setRecentMeasurements({});
    m_storage.saveRecentMeasurements();
}

void RulerManager::windowDidEndLiveResize()
{
    addMeasurement(m_window->width(), m_window->height());
}

void RulerManager::addMeasurement(int width, int height)
{
    const QString text = measurementText(width, height);
    QStringList measurements = m_storage.recentMeasurements();
    measurements.removeOne(text);
    measurements.prepend(text);
    if (measurements.size() > mostMeasurements)
        measurements.removeLast();
    m_storage.setRecentMeasurements(measurements);
    m_storage.saveRecentMeasurements();
}

} // namespace quillbay

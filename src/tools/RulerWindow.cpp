#include "tools/RulerWindow.h"

#include <QEvent>
#include <QPainterPath>
#include <QQuickItem>
#include <QRegion>
#include <QResizeEvent>

namespace quillbay {

namespace {

constexpr QSize firstSize(400, 300);
constexpr QSize leastSize(200, 160);
constexpr int edge = 40; // room for ticks and numbers

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::Enter:
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::TouchBegin:
    case QEvent::TabletEnterProximity:
    case QEvent::KeyPress:
        return true;
    default:
        return false;
    }
}

} // namespace

RulerWindow::RulerWindow(const QUrl &content)
    : m_asked(firstSize)
{
    setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setColor(Qt::transparent);
    setTitle(tr("Screen Ruler"));
    setMinimumSize(leastSize);
    setResizeMode(SizeRootObjectToView);
    resize(firstSize);
    setSource(content);
}

void RulerWindow::setSize(QSize size)
{
    m_asked = size.expandedTo(leastSize);
    m_isLiveResize = false;
    resize(m_asked);
}

void RulerWindow::setOpaque()
{
    m_isOpaque = true;
    if (QQuickItem *content = rootObject())
        content->setProperty("seeThrough", false);
    cutOut();
}

void RulerWindow::cutOut()
{
    const QRect whole({}, size());
    QRegion region(whole);
    region -= whole.adjusted(edge, edge, -edge, -edge);
    if (const QQuickItem *content = rootObject()) {
        const qreal radius = content->property("solidRadius").toReal();
        QPainterPath solid;
        solid.addRoundedRect(content->property("solidArea").toRectF(), radius, radius);
        region += QRegion(solid.toFillPolygon().toPolygon());
    }
    setMask(region);
}

bool RulerWindow::event(QEvent *event)
{
    if (!isInput(event->type()))
        return QQuickView::event(event); // one of these deletes the window
    const bool isHandled = QQuickView::event(event);
    if (m_isLiveResize) {
        m_isLiveResize = false;
        Q_EMIT liveResizeEnded();
    }
    return isHandled;
}

void RulerWindow::resizeEvent(QResizeEvent *event)
{
    QQuickView::resizeEvent(event);
    if (m_isOpaque)
        cutOut();
    if (isVisible() && event->size() != event->oldSize() && event->size() != m_asked)
        m_isLiveResize = true;
    // A live resize that comes back to the size asked for has ended there all the same.
    if (m_isLiveResize)
        m_asked = {};
}

} // namespace quillbay

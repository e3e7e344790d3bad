#include "app/WindowDelegate.h"

#include "app/MainWindow.h"

#include <QEvent>
#include <QQuickWindow>

namespace quillbay {

WindowDelegate::WindowDelegate(MainWindow &mainWindow, QObject *parent)
    : QObject(parent)
    , m_mainWindow(mainWindow)
{
    m_mainWindow.window().installEventFilter(this);
}

bool WindowDelegate::windowShouldClose()
{
    m_mainWindow.hide();
    return false;
}

bool WindowDelegate::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close)
        return QObject::eventFilter(watched, event);
    if (windowShouldClose())
        return false;
    event->ignore();
    return true;
}

} // namespace quillbay

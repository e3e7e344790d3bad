#include "app/KeyMonitor.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace quillbay {

KeyMonitor::KeyMonitor(Handler handler, QObject *parent)
    : QObject(parent)
    , m_handler(std::move(handler))
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool KeyMonitor::eventFilter(QObject *watched, QEvent *event)
{
    // A window hands its keys on to its items: the second time is not the user's.
    if (event->type() != QEvent::KeyPress || !watched->isWindowType())
        return false;
    const QString letter = shortcutLetter(static_cast<const QKeyEvent &>(*event));
    return !letter.isEmpty() && m_handler(letter);
}

QString shortcutLetter(const QKeyEvent &event)
{
    if (event.modifiers() != Qt::ControlModifier || event.key() < Qt::Key_A || event.key() > Qt::Key_Z ||
        event.key() == Qt::Key_K)
        return {};
    return QChar(ushort(event.key())).toLower();
}

} // namespace quillbay

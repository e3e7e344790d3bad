#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QKeyEvent;

namespace quillbay {

/// Sees every key press of the program's windows before they do: Control (Command where that is the
/// desktop's key) with a letter and nothing else is offered to the handler.
///
/// Thread: main thread. Watches the application object from construction to destruction.
class KeyMonitor : public QObject
{
    Q_OBJECT

public:
    /// Gets the lower-case letter; answers true to swallow the key.
    using Handler = std::function<bool(const QString &letter)>;

    explicit KeyMonitor(Handler handler, QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Handler m_handler;
};

/// The letter "a" to "z" that a key press offers; empty for every other key and for "k", which belongs to
/// the search field.
QString shortcutLetter(const QKeyEvent &event);

} // namespace quillbay

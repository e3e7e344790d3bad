#pragma once

#include <QObject>

namespace quillbay {

class MainWindow;

/// Answers the window's request to close: the program is hidden, the window and all state stay.
/// Thread: main thread.
class WindowDelegate : public QObject
{
    Q_OBJECT

public:
    /// Filters the window's events from now on; `mainWindow` must outlive this object.
    explicit WindowDelegate(MainWindow &mainWindow, QObject *parent = nullptr);

    /// Hides the program and answers that the window stays.
    bool windowShouldClose();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    MainWindow &m_mainWindow;
};

} // namespace quillbay

#pragma once

#include <QQmlApplicationEngine>

class QQuickWindow;

namespace quillbay {

class NotificationCenter;
class QuillbayViewModel;

/// The engine with all screens loaded. Loads `ContentView` and hands its window out, not shown yet.
///
/// Needs the `Theme`, and like it must not outlive what it is given. Thread: main thread; one at a time.
class Screens
{
public:
    Screens(QuillbayViewModel &viewModel, NotificationCenter &notifications);
    ~Screens();
    Screens(const Screens &) = delete;
    Screens &operator=(const Screens &) = delete;

    /// Null when the screens could not be loaded; the engine has then printed why.
    QQuickWindow *window() const;

private:
    QQmlApplicationEngine m_engine;
};

} // namespace quillbay

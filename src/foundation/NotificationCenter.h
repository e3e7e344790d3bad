#pragma once

#include <QObject>

namespace quillbay {

/// The four announcements that any room may post and any other may hear. None carries a value: who hears one
/// reads what it needs from the object that owns it.
///
/// Thread: main thread. `main` owns the one instance and hands it out.
class NotificationCenter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// The global hotkey was pressed; the window has been asked to come forward.
    void quillbayHotkeyTriggered();
    /// The user asked for the search field.
    void quillbaySearchFocusRequested();
    /// The program was reopened while the screen ruler was showing.
    void quillbayAppReopened();
    /// Another workspace became active, or the active one was edited.
    void quillbayWorkspaceChanged();
};

} // namespace quillbay

#pragma once

#include <QKeyCombination>
#include <QObject>
#include <QString>

namespace quillbay::platform {

/// A key that works while other programs are active. Each way of having one is an object of its own that says
/// whether it can work in the running session.
///
/// Thread: main thread.
class GlobalHotkey : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether this way applies to the running session. Cheap, asks nobody.
    virtual bool isAvailable() const = 0;

    /// Asks for the key; answers by `registered` or `failed`, never before this returns. Called once.
    virtual void registerKey(QKeyCombination key) = 0;

    /// To be called when the window that the key brought forward has taken the keyboard, so that keys typed
    /// meanwhile reach it. Harmless at any other time.
    virtual void keyboardTaken() {}

Q_SIGNALS:
    /// The key is live. `way` names how ("X11 grab", "desktop portal"), `trigger` the key as the desktop
    /// calls it.
    void registered(const QString &way, const QString &trigger);
    /// The key could not be had; `reason` is for the log.
    void failed(const QString &reason);
    /// The key was pressed. `activationToken` lets the window come forward on Wayland; may be empty.
    void activated(const QString &activationToken);
};

} // namespace quillbay::platform

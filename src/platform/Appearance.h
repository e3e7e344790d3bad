#pragma once

#include <QObject>
#include <QString>

namespace quillbay::platform {

/// What the desktop says about how programs should look, followed live.
///
/// Thread: main thread. Before the desktop has answered, and without one that answers, the getters give the
/// defaults; each change is announced once.
class Appearance : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool dark READ isDark NOTIFY darkChanged)
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY reducedMotionChanged)

public:
    using QObject::QObject;

    virtual bool isDark() const = 0;
    /// Whether the desktop asks for less movement.
    virtual bool reducedMotion() const = 0;
    /// The icon theme's directory name; empty while unknown.
    virtual QString iconTheme() const = 0;

Q_SIGNALS:
    void darkChanged();
    void reducedMotionChanged();
    void iconThemeChanged();
};

} // namespace quillbay::platform

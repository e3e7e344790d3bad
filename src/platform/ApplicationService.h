#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>

namespace quillbay::platform {

/// The program as the desktop knows it: one instance at a time, brought forward by a second start, by the
/// desktop's own activation and by URLs.
///
/// Thread: main thread. `claim` is called once, before any window exists.
class ApplicationService : public QObject
{
    Q_OBJECT

public:
    enum class Claim {
        Primary,   ///< This process is the program.
        Forwarded, ///< Another one is, and it took the call: end with success.
        Refused    ///< Another one is, and it did not answer: end with failure.
    };

    using QObject::QObject;

    /// Becomes the one instance, or hands `urls` (or, without any, an activation) to the one that is. The one
    /// instance's own `urls` are delivered as `opened`, like anyone's. Without a session bus a lock in the
    /// runtime folder decides, and a second start then only ends (`Refused`).
    virtual Claim claim(const QStringList &urls) = 0;

    /// From here on activations are delivered; those that arrived earlier are delivered first. Until then
    /// they wait, since no window exists that could come forward.
    virtual void start() = 0;

Q_SIGNALS:
    /// The program was started again, or its entry in the desktop was clicked.
    void activated(const QString &activationToken);
    /// URLs were opened into the program; an activation follows by itself.
    void opened(const QStringList &urls);
    /// A named action of the program was asked for, with its parameters.
    void actionRequested(const QString &action, const QVariantList &parameters);
};

} // namespace quillbay::platform

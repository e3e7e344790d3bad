#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace quillbay::platform {

/// A program to be started, all of it decided; in the bytes of the system.
struct DetachedProcess
{
    QByteArray program;          ///< Absolute path.
    QByteArrayList arguments;    ///< With the program's own name first.
    QByteArrayList environment;  ///< `NAME=value` each.
    QByteArray workingDirectory; ///< Absolute path.
    /// Name of a variable that is to hold the process id of the program itself; empty: none.
    QByteArray pidVariable;
};

struct DetachedStart
{
    enum class Step { None, Prepare, Descriptors, WorkingDirectory, Execute };

    qint64 pid = 0;           ///< Of the program; 0 if it was not started.
    Step failed = Step::None; ///< Where it went wrong.
    int error = 0;            ///< The `errno` of that step.
};

/// Starts a program that belongs to itself: leader of its own session, child of the session's reaper,
/// standard streams on the null device, no descriptor of ours, no signal blocked or ignored. It outlives us,
/// the terminal we were started from, and a signal to our process group.
///
/// Written with system calls, since `QProcess::startDetached` passes on every descriptor that was opened
/// without close-on-exec (by any library) and whatever signals we ignore, and runs no hook of ours in the
/// child.
///
/// No page of ours is copied, so neither our size nor our other threads matter.
///
/// Returns when the program has been executed or could not be: it blocks for the milliseconds that takes. Any
/// thread; several at a time.
DetachedStart startDetached(const DetachedProcess &process);

} // namespace quillbay::platform

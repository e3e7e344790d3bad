#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>

namespace quillbay::platform {

/// How a package manager's program ended and what it wrote.
struct PackageToolResult
{
    enum class End {
        Exited,
        NotStarted,
        Crashed,
        TimedOut, ///< It was ended by us, with what it had started.
        TooMuch,  ///< It wrote more than `MaximumToolOutput`; ended likewise.
    };

    End end = End::NotStarted;
    int exitCode = -1;
    QByteArray output; ///< Standard output, whole.
    QByteArray errors; ///< Standard error, whole.

    bool exitedWith(int code) const { return end == End::Exited && exitCode == code; }
    /// What went wrong, for the user: the last that it wrote to standard error, or how it ended.
    QString problem() const;
};

inline constexpr qsizetype MaximumToolOutput = qsizetype(8) << 20;

/// Runs `program` (absolute path, no shell) without input, in the C locale and in a session of its own, which
/// has no terminal to ask questions on, and waits for its end. Thread: any but the main thread.
PackageToolResult runPackageTool(const QString &program, const QStringList &arguments,
                                 std::chrono::milliseconds limit);

/// Text that others wrote, made fit to be shown: its end, on one line, without control characters.
QString presentable(const QByteArray &text);

} // namespace quillbay::platform

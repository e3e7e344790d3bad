#pragma once

#include "platform/FileStamp.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace quillbay::platform {

/// A command line for root.
struct ElevatedCommand
{
    QByteArray line; ///< `rm -rf 'PATH'` or `mv 'PATH' 'PATH'`; an apostrophe in a path is written `'\''`.
    FileStamp file;  ///< What the first path must lead to.
};

struct ElevationResult
{
    enum class Outcome {
        Done,
        Refused,      ///< The person closed the question.
        NoAgent,      ///< There is nobody to ask: no program that shows the question.
        NotPermitted, ///< The system says no: not allowed, wrong password.
        Unavailable,  ///< The means are missing, or not to be trusted.
        Changed,      ///< There is another file than the one that was meant; nothing was done.
        CommandFailed,
        Abandoned ///< The program ends. A question is withdrawn, a command that runs is not.
    };
    Outcome outcome = Outcome::CommandFailed;
    QString description; ///< The reason in the system's words, without a path; may be empty.
};

/// Runs a command with the rights of the administrator, after the person was asked.
///
/// Thread: main.
class Elevation
{
public:
    using Finished = std::function<void(const ElevationResult &)>;

    /// Calls every `Finished` still open, with Abandoned.
    virtual ~Elevation() = default;

    /// Starts the command and returns at once. `finished` is called once, on the main thread, from the event
    /// loop or, where nothing could be started, before this returns.
    virtual void run(const ElevatedCommand &command, Finished finished) = 0;
};

} // namespace quillbay::platform

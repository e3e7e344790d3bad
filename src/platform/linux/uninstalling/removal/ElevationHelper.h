#pragma once

#include "platform/Elevation.h"

#include <QString>
#include <QStringList>

namespace quillbay::platform {

/// The program that runs as root.
struct ElevationHelper
{
    QString path;
    /// It has its place in the system, where only root may have put it; else it lies beside the program, in
    /// the folder that it was built in.
    bool installed = false;

    /// The installed one for a program that is installed, the one beside it for another.
    static ElevationHelper ofProgram();

    /// Whether it is there and may run as root: an installed one must be root's, and writable by nobody else.
    bool isTrustworthy() const;
};

/// The helper's arguments for a command. Text travels as it stands, so that the question can show it; a line
/// with bytes that are no printable text is escaped, since neither the bus nor a screen takes those.
QStringList helperArguments(const ElevatedCommand &command);

} // namespace quillbay::platform

#pragma once

#include "platform/Elevation.h"

#include <QByteArray>

namespace quillbay::platform {

/// How a run of pkexec ended.
struct PkexecEnd
{
    bool crashed = false;
    int exitCode = 0;
    QByteArray output;
    QByteArray errors;
};

/// Whether the helper itself has begun: exit codes before that are pkexec's own.
bool hasStarted(const QByteArray &output);

/// What that means. pkexec ends with 126 when the person closed the question and with 127 for everything
/// else, which only its English text tells apart; the helper's codes are those of its usage text. An end
/// without the helper's first line is never Done.
ElevationResult readAnswer(const PkexecEnd &end);

} // namespace quillbay::platform

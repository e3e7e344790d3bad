#pragma once

#include <QString>

namespace quillbay {

/// Prints one diagnostic line to standard output, UTF-8, flushed at once so that whoever reads a pipe sees
/// it. Thread: any.
void printLine(const QString &line);

} // namespace quillbay

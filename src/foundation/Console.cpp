#include "foundation/Console.h"

#include <cstdio>

namespace quillbay {

void printLine(const QString &line)
{
    const QByteArray text = line.toUtf8() + '\n';
    // A reader that has gone away is no reason to stop.
    std::fwrite(text.constData(), 1, size_t(text.size()), stdout);
    std::fflush(stdout);
}

} // namespace quillbay

#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QMap>
#include <QString>

#include <optional>

namespace quillbay::testing {

/// What the stand-in program found when it was started.
struct ProbeReport
{
    QByteArrayList arguments; ///< Without the program's own name.
    QMap<QByteArray, QByteArray> environment;
    QByteArrayList descriptors; ///< "number target" each.
    QByteArray directory;
    QByteArray blockedSignals; ///< Hexadecimal mask, as the kernel writes it.
    QByteArray ignoredSignals;
    qint64 process = 0;
    qint64 parent = 0;
    qint64 session = 0;
};

/// Path of the stand-in program.
QString probeProgram();

/// Waits until the program has written `file`, ten seconds at most.
std::optional<ProbeReport> awaitReport(const QString &file);

/// Waits for a file to appear, ten seconds at most.
bool awaitFile(const QString &file);

} // namespace quillbay::testing

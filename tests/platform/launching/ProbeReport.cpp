#include "ProbeReport.h"

#include <QFile>
#include <QTest>

namespace quillbay::testing {

QString probeProgram()
{
    return QStringLiteral(LAUNCH_PROBE);
}

bool awaitFile(const QString &file)
{
    return QTest::qWaitFor([&file] { return QFile::exists(file); }, 10'000);
}

std::optional<ProbeReport> awaitReport(const QString &file)
{
    QFile input(file);
    if (!awaitFile(file) || !input.open(QIODevice::ReadOnly))
        return std::nullopt;
    ProbeReport report;
    const auto lines = input.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QByteArray kind = line.left(line.indexOf(' '));
        const QByteArray value = line.mid(kind.size() + 1);
        if (kind == "argument")
            report.arguments.append(value);
        else if (kind == "variable")
            report.environment.insert(value.left(value.indexOf('=')), value.mid(value.indexOf('=') + 1));
        else if (kind == "descriptor")
            report.descriptors.append(value);
        else if (kind == "directory")
            report.directory = value;
        else if (kind == "SigBlk")
            report.blockedSignals = value;
        else if (kind == "SigIgn")
            report.ignoredSignals = value;
        else if (kind == "process")
            report.process = value.toLongLong();
        else if (kind == "parent")
            report.parent = value.toLongLong();
        else if (kind == "session")
            report.session = value.toLongLong();
    }
    if (!report.arguments.isEmpty())
        report.arguments.removeFirst();
    return report;
}

} // namespace quillbay::testing

#include "support/TestProgram.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>

namespace quillbay::testing {

namespace {
constexpr std::chrono::seconds patience(20);
}

TestProgram::TestProgram(const QString &program, const QStringList &arguments,
                         const QProcessEnvironment &environment)
{
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(program, arguments);
    if (!m_process.waitForStarted())
        qFatal("cannot start %s", qPrintable(program));
}

TestProgram::~TestProgram()
{
    kill();
}

QStringList TestProgram::lines()
{
    m_process.waitForReadyRead(0);
    m_partial += m_process.readAllStandardOutput();
    for (int end; (end = int(m_partial.indexOf('\n'))) >= 0; m_partial.remove(0, end + 1))
        m_lines.append(QString::fromUtf8(m_partial.left(end)));
    return m_lines;
}

int TestProgram::count(const QString &prefix)
{
    const QStringList all = lines();
    return int(
        std::count_if(all.begin(), all.end(), [&](const QString &line) { return line.startsWith(prefix); }));
}

QString TestProgram::rest(const QString &prefix)
{
    for (const QString &line : lines()) {
        if (line.startsWith(prefix))
            return line.mid(prefix.size());
    }
    return {};
}

QStringList TestProgram::take(int count)
{
    waitUntil([&] { return lines().size() >= count; });
    const QStringList taken = lines().mid(0, count);
    m_lines.remove(0, taken.size());
    return taken;
}

bool TestProgram::waitFor(const QString &prefix, int times)
{
    return waitUntil([&] { return count(prefix) >= times; });
}

bool TestProgram::waitUntil(const std::function<bool()> &holds)
{
    const QDeadlineTimer deadline(patience);
    while (!holds()) {
        if (deadline.hasExpired() || m_process.state() == QProcess::NotRunning)
            return false;
        m_process.waitForReadyRead(50);
    }
    return true;
}

void TestProgram::send(const QByteArray &line)
{
    m_process.write(line + '\n');
    m_process.waitForBytesWritten();
}

int TestProgram::exitCode()
{
    const int milliseconds = int(std::chrono::milliseconds(patience).count());
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(milliseconds))
        return -1;
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

void TestProgram::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

} // namespace quillbay::testing

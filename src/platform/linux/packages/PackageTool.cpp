#include "platform/linux/packages/PackageTool.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QThread>
#include <QTimer>

#include <csignal>

#include <unistd.h>

namespace quillbay::platform {

namespace {

constexpr qsizetype longestShown = 400;

class ToolRun
{
public:
    ToolRun(const QString &program, const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
        for (const char *name : {"LANGUAGE", "LD_PRELOAD", "LD_LIBRARY_PATH"})
            environment.remove(QLatin1String(name));
        m_process.setProcessEnvironment(environment);
        m_process.setStandardInputFile(QProcess::nullDevice());
        m_process.setWorkingDirectory(QStringLiteral("/"));
        m_process.setChildProcessModifier([] {
            if (::setsid() < 0)
                ::_exit(127);
        });
        m_process.setProgram(program);
        m_process.setArguments(arguments);
    }

    PackageToolResult run(std::chrono::milliseconds limit)
    {
        QObject::connect(&m_process, &QProcess::readyReadStandardOutput, &m_process, [this] { take(); });
        QObject::connect(&m_process, &QProcess::readyReadStandardError, &m_process, [this] { take(); });
        QObject::connect(&m_process, &QProcess::finished, &m_loop, [this] { stop(endOfProcess()); });
        QObject::connect(&m_process, &QProcess::errorOccurred, &m_loop, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                stop(PackageToolResult::End::NotStarted);
        });
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, &m_loop,
                         [this] { stop(PackageToolResult::End::TimedOut); });
        timer.start(limit);
        m_process.start();
        if (!m_isStopped)
            m_loop.exec();
        if (m_process.state() != QProcess::NotRunning)
            endGroup();
        else
            take();
        return m_result;
    }

private:
    PackageToolResult::End endOfProcess() const
    {
        return m_process.exitStatus() == QProcess::NormalExit ? PackageToolResult::End::Exited
                                                              : PackageToolResult::End::Crashed;
    }

    void stop(PackageToolResult::End end)
    {
        if (m_isStopped)
            return;
        m_isStopped = true;
        m_result.end = end;
        if (end == PackageToolResult::End::Exited)
            m_result.exitCode = m_process.exitCode();
        m_loop.quit();
    }

    void take()
    {
        m_result.output += m_process.readAllStandardOutput();
        m_result.errors += m_process.readAllStandardError();
        if (m_result.output.size() <= MaximumToolOutput && m_result.errors.size() <= MaximumToolOutput)
            return;
        stop(PackageToolResult::End::TooMuch);
        m_result.end = PackageToolResult::End::TooMuch;
        m_result.output.clear();
        m_result.errors.clear();
    }

    void endGroup()
    {
        const qint64 leader = m_process.processId();
        // Without a session of its own yet there is only the process itself to end.
        if (leader <= 1 || ::kill(-pid_t(leader), SIGKILL) != 0)
            m_process.kill();
        m_process.waitForFinished();
    }

    QProcess m_process;
    QEventLoop m_loop;
    PackageToolResult m_result;
    bool m_isStopped = false;
};

} // namespace

QString PackageToolResult::problem() const
{
    switch (end) {
    case End::NotStarted:
        return QStringLiteral("the package manager could not be started");
    case End::Crashed:
        return QStringLiteral("the package manager crashed");
    case End::TimedOut:
        return QStringLiteral("the package manager did not answer in time");
    case End::TooMuch:
        return QStringLiteral("the package manager's answer has no end");
    case End::Exited:
        break;
    }
    const QString text = presentable(errors);
    return text.isEmpty() ? QStringLiteral("the package manager failed with code %1").arg(exitCode) : text;
}

PackageToolResult runPackageTool(const QString &program, const QStringList &arguments,
                                 std::chrono::milliseconds limit)
{
    Q_ASSERT(QThread::currentThread() != QCoreApplication::instance()->thread());
    if (!QFileInfo(program).isAbsolute())
        return {};
    return ToolRun(program, arguments).run(limit);
}

QString presentable(const QByteArray &text)
{
    QString shown = QString::fromUtf8(text.right(4 * longestShown));
    for (QChar &character : shown) {
        if (!character.isPrint() && !character.isSurrogate())
            character = u' ';
    }
    return shown.simplified().right(longestShown);
}

} // namespace quillbay::platform

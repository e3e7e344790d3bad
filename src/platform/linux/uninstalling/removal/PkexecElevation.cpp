#include "platform/linux/uninstalling/removal/PkexecElevation.h"

#include "platform/linux/uninstalling/removal/ElevationAnswer.h"

#include <QProcessEnvironment>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace quillbay::platform {

namespace {

using Outcome = ElevationResult::Outcome;

constexpr qsizetype longestText = 64 * 1024;
constexpr int questionEndsWithin = 1000; // Milliseconds.

void append(QByteArray &text, const QByteArray &more)
{
    text += more.left(std::max<qsizetype>(0, longestText - text.size()));
}

} // namespace

struct PkexecElevation::Run
{
    std::unique_ptr<QProcess> process = std::make_unique<QProcess>();
    Finished finished;
    PkexecEnd progress;

    void read()
    {
        append(progress.output, process->readAllStandardOutput());
        append(progress.errors, process->readAllStandardError());
    }
};

PkexecElevation::PkexecElevation(ElevationHelper helper)
    : m_helper(std::move(helper))
{
}

PkexecElevation::~PkexecElevation()
{
    for (auto &run : std::exchange(m_runs, {})) {
        run->process->disconnect();
        run->read();
        // pkexec that still asks is the user's own, and ends at once.
        if (!hasStarted(run->progress.output)) {
            run->process->kill();
            run->process->waitForFinished(questionEndsWithin);
        }
        // What runs as root by now is not ours to end, and not to be waited for: the object is left to the
        // system with the rest of the process.
        if (run->process->state() != QProcess::NotRunning)
            static_cast<void>(run->process.release());
        run->finished({Outcome::Abandoned, {}});
    }
}

void PkexecElevation::run(const ElevatedCommand &command, Finished finished)
{
    const QString pkexec = QStandardPaths::findExecutable(QStringLiteral("pkexec"));
    if (pkexec.isEmpty())
        return finished({Outcome::Unavailable, QStringLiteral("pkexec is not installed")});
    if (!m_helper.isTrustworthy())
        return finished(
            {Outcome::Unavailable, QStringLiteral("the helper program is missing, or is not root's alone")});

    Run *run = m_runs.emplace_back(std::make_unique<Run>()).get();
    run->finished = std::move(finished);
    QProcess *process = run->process.get();
    // pkexec refuses to run at all for a shell that the system does not list.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("SHELL"));
    // Its own words are read; those of the question are in the language of whoever shows it.
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process->setProcessEnvironment(environment);
    process->setWorkingDirectory(QStringLiteral("/"));
    process->setStandardInputFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::readyRead, process, [run] { run->read(); });
    QObject::connect(process, &QProcess::readyReadStandardError, process, [run] { run->read(); });
    QObject::connect(process, &QProcess::errorOccurred, process, [this, run](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(run, {Outcome::Unavailable, run->process->errorString()});
    });
    QObject::connect(process, &QProcess::finished, process,
                     [this, run](int exitCode, QProcess::ExitStatus status) {
                         run->read();
                         run->progress.crashed = status == QProcess::CrashExit;
                         run->progress.exitCode = exitCode;
                         end(run, readAnswer(run->progress));
                     });
    // Without its own agent on a terminal: where no desktop asks, nobody is asked.
    process->start(pkexec, QStringList{QStringLiteral("--disable-internal-agent"), m_helper.path} +
                               helperArguments(command));
}

void PkexecElevation::end(Run *run, const ElevationResult &result)
{
    const auto place =
        std::find_if(m_runs.begin(), m_runs.end(), [run](const auto &each) { return each.get() == run; });
    if (place == m_runs.end())
        return;
    const std::unique_ptr<Run> ended = std::move(*place);
    m_runs.erase(place);
    // Its own signal is being delivered.
    ended->process.release()->deleteLater();
    ended->finished(result);
}

} // namespace quillbay::platform

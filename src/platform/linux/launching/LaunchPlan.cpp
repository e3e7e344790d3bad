#include "platform/linux/launching/LaunchPlan.h"

#include "platform/linux/launching/ExecLine.h"
#include "platform/linux/launching/TerminalCommand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

namespace quillbay::platform {

namespace {

using Plan = std::variant<DetachedProcess, LaunchResult>;

Plan refuse(LaunchOutcome outcome, const QString &reason)
{
    return LaunchResult{outcome, reason};
}

QString directoryFor(const ApplicationDetails &details, const Environment &environment)
{
    if (QDir::isAbsolutePath(details.workingDirectory))
        return details.workingDirectory;
    const QString home = QFile::decodeName(environment.value("HOME"));
    return QDir::isAbsolutePath(home) && QFileInfo(home).isDir() ? home : QStringLiteral("/");
}

Plan process(const QString &program, const QStringList &arguments, const QString &directory,
             Environment environment, const ActivationToken &token)
{
    if (!token.startupId.isEmpty())
        environment.insert("DESKTOP_STARTUP_ID", token.startupId.toUtf8());
    if (!token.activationToken.isEmpty())
        environment.insert("XDG_ACTIVATION_TOKEN", token.activationToken.toUtf8());
    environment.insert("PWD", QFile::encodeName(directory));
    DetachedProcess result;
    result.program = QFile::encodeName(program);
    for (const QString &argument : arguments)
        result.arguments.append(QFile::encodeName(argument));
    for (auto variable = environment.cbegin(); variable != environment.cend(); ++variable)
        result.environment.append(variable.key() + '=' + variable.value());
    result.workingDirectory = QFile::encodeName(directory);
    return result;
}

Plan planFile(const ApplicationDetails &details, const ActivationToken &token, const Environment &environment)
{
    const QFileInfo file(details.executable);
    if (!file.exists())
        return refuse(LaunchOutcome::NotFound, QStringLiteral("%1 does not exist").arg(details.executable));
    if (!file.isFile() || !file.isExecutable()) {
        return refuse(LaunchOutcome::Failed,
                      QStringLiteral("%1 is not an executable file").arg(details.executable));
    }
    return process(details.executable, {details.executable}, directoryFor(details, environment), environment,
                   token);
}

Plan planEntry(const QString &path, const ApplicationDetails &details, const ActivationToken &token,
               Environment environment)
{
    const ExecLine line = parseExecLine(details.exec, {details.icon, details.name, path});
    if (!line.isValid())
        return refuse(LaunchOutcome::Malformed, line.error);
    const QString directory = directoryFor(details, environment);
    const QString program = findProgram(line.arguments.constFirst(), environment, directory);
    if (program.isEmpty()) {
        return refuse(LaunchOutcome::NotFound,
                      QStringLiteral("there is no program %1").arg(line.arguments.constFirst()));
    }
    environment.insert("GIO_LAUNCHED_DESKTOP_FILE", QFile::encodeName(path));
    Plan plan;
    if (details.terminal) {
        const QStringList command = terminalCommand(line.arguments, environment);
        if (command.isEmpty())
            return refuse(LaunchOutcome::Failed, QStringLiteral("no terminal is installed"));
        plan = process(command.constFirst(), command, directory, environment, token);
    } else {
        plan = process(program, line.arguments, directory, environment, token);
    }
    if (auto *found = std::get_if<DetachedProcess>(&plan))
        found->pidVariable = "GIO_LAUNCHED_DESKTOP_FILE_PID";
    return plan;
}

} // namespace

Plan planLaunch(const QString &path, const ApplicationDetails &details, const ActivationToken &token,
                const Environment &environment)
{
    return details.executable.isEmpty() ? planEntry(path, details, token, environment)
                                        : planFile(details, token, environment);
}

LaunchResult resultOfStart(const DetachedProcess &process, const DetachedStart &start)
{
    using Step = DetachedStart::Step;
    const QString error = QString::fromLocal8Bit(std::strerror(start.error));
    const auto failed = [&error](const QString &what) {
        return LaunchResult{LaunchOutcome::Failed, what + QStringLiteral(": ") + error};
    };
    switch (start.failed) {
    case Step::None:
        return {LaunchOutcome::Started, {}};
    case Step::WorkingDirectory:
        return failed(QFile::decodeName(process.workingDirectory));
    case Step::Execute: {
        LaunchResult result = failed(QFile::decodeName(process.program));
        if (start.error == ENOENT)
            result.outcome = LaunchOutcome::NotFound;
        return result;
    }
    case Step::Prepare:
    case Step::Descriptors:
        break;
    }
    return failed(QStringLiteral("no process could be made"));
}

} // namespace quillbay::platform

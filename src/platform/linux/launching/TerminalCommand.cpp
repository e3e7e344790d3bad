#include "platform/linux/launching/TerminalCommand.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace quillbay::platform {

namespace {

struct Terminal
{
    const char *program;
    QStringList lead; // What stands between the terminal's name and the command.
};

const std::vector<Terminal> &commonTerminals()
{
    static const QStringList execute{QStringLiteral("-e")};
    static const QStringList rest{QStringLiteral("--")};
    static const QStringList executeRest{QStringLiteral("-x")};
    static const std::vector<Terminal> terminals{
        {"ptyxis", rest},
        {"kgx", rest},
        {"gnome-terminal", rest},
        {"konsole", execute},
        {"xfce4-terminal", executeRest},
        {"mate-terminal", executeRest},
        {"foot", {}},
        {"kitty", {}},
        {"alacritty", execute},
        {"wezterm", {QStringLiteral("start"), QStringLiteral("--")}},
        {"urxvt", execute},
        {"rxvt", execute},
        {"st", execute},
        {"xterm", execute},
    };
    return terminals;
}

QStringList leadOf(const QString &program)
{
    const QByteArray name = QFile::encodeName(QFileInfo(program).fileName());
    const auto &terminals = commonTerminals();
    const auto known = std::find_if(terminals.begin(), terminals.end(),
                                    [&](const Terminal &terminal) { return name == terminal.program; });
    return known == terminals.end() ? QStringList{QStringLiteral("-e")} : known->lead;
}

} // namespace

QStringList terminalCommand(const QStringList &arguments, const Environment &environment)
{
    const auto found = [&](const QString &name) { return findProgram(name, environment, QString()); };
    if (const QString program = found(QStringLiteral("xdg-terminal-exec")); !program.isEmpty())
        return QStringList{program} + arguments;
    QStringList candidates{QStringLiteral("x-terminal-emulator")};
    if (const QString chosen = QFile::decodeName(environment.value("TERMINAL")); !chosen.isEmpty())
        candidates.append(chosen);
    for (const Terminal &terminal : commonTerminals())
        candidates.append(QString::fromLatin1(terminal.program));
    for (const QString &candidate : std::as_const(candidates)) {
        if (const QString program = found(candidate); !program.isEmpty())
            return QStringList{program} + leadOf(candidate) + arguments;
    }
    return {};
}

} // namespace quillbay::platform

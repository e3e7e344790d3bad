#include "platform/linux/uninstalling/EntryProgram.h"

#include "platform/linux/launching/ExecLine.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace quillbay::platform {

namespace {

bool bearsName(const QString &folder, const QString &name)
{
    if (name.isEmpty() || !folder.startsWith(name, Qt::CaseInsensitive))
        return false;
    if (folder.size() == name.size())
        return true;
    const QChar next = folder.at(name.size());
    return next.isDigit() || QStringView(u"-_. ").contains(next);
}

bool isLayoutFolder(const QByteArray &name)
{
    static const QList<QByteArray> names{"bin", "sbin", "lib", "lib64", "libexec", "usr"};
    return names.contains(name);
}

} // namespace

QString programOf(const ApplicationDetails &details)
{
    if (!details.executable.isEmpty())
        return details.executable;
    const QStringList words = parseExecLine(details.exec, {}).arguments;
    if (words.isEmpty() || words.constFirst().section(u'/', -1) != QLatin1String("env"))
        return words.value(0);
    for (qsizetype i = 1; i < words.size(); ++i) {
        const QString &word = words[i];
        if (word == QLatin1String("-u") || word == QLatin1String("-C"))
            ++i; // what follows is the option's value
        else if (!word.startsWith(u'-') && !word.contains(u'='))
            return word;
    }
    return {};
}

bool runsOthers(const QString &baseName)
{
    static const QRegularExpression runners(QRegularExpression::anchoredPattern(QStringLiteral(
        "(ba|da|k|z|fi|tc|c)?sh|env|(python|pypy|perl|ruby|lua|php|node|gjs|mono|java|electron|wine)[0-9.]*|"
        "wine64|deno|bun|flatpak|snap|gtk-launch|xdg-open|gio|dbus-launch|dbus-run-session|pkexec|sudo|"
        "gksu|kdesu|nice|ionice|nohup|setsid|systemd-run|x-terminal-emulator|xterm|busybox|true|false")));
    return baseName.isEmpty() || runners.match(baseName.toLower()).hasMatch();
}

QByteArray ownFolderOf(const QByteArray &program, const QByteArray &home, const QStringList &names)
{
    QByteArray folder = program;
    do {
        folder.truncate(std::max<qsizetype>(folder.lastIndexOf('/'), 0));
        if (!folder.startsWith(home + '/'))
            return {};
        const QByteArray base = folder.mid(folder.lastIndexOf('/') + 1);
        const QString text = QFile::decodeName(base);
        if (std::any_of(names.begin(), names.end(),
                        [&](const QString &name) { return bearsName(text, name); }))
            return folder;
        if (!isLayoutFolder(base))
            return {};
    } while (!folder.isEmpty());
    return {};
}

} // namespace quillbay::platform

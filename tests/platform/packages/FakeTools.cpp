#include "platform/packages/FakeTools.h"

#include <QDir>
#include <QFile>

namespace quillbay::testing {

FakeTools::FakeTools()
{
    for (const char *folder : {"bin", "answers", "home"})
        QDir(m_folder.path()).mkdir(QLatin1String(folder));
}

platform::PackageSurroundings FakeTools::surroundings() const
{
    platform::PackageSurroundings result;
    result.toolFolders = {path(QStringLiteral("bin"))};
    result.desktops = {QStringLiteral("XFCE")};
    result.home = home();
    result.systemBus = [] { return QDBusConnection(QStringLiteral("no bus in this test")); };
    result.ownFiles = [] { return QByteArrayList(); };
    return result;
}

void FakeTools::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(name));
}

void FakeTools::makeTool(const QString &tool)
{
    const QString program = QStringLiteral("bin/") + tool;
    if (QFile::exists(path(program)))
        return;
    write(program, "#!/bin/sh\n"
                   "here=" +
                       m_folder.path().toUtf8() +
                       "\n"
                       "answer=$here/answers/${0##*/}.$1\n"
                       "{ printf '%s' \"${0##*/}\"; printf '|%s' \"$@\"; echo; } >> \"$here/calls\"\n"
                       ". \"$answer.sh\"\n");
    QFile::setPermissions(path(program), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void FakeTools::answer(const QString &tool, const QString &verb, const Answer &answer)
{
    const QString start = QStringLiteral("answers/%1.%2").arg(tool, verb);
    write(start + QStringLiteral(".out"), answer.output);
    write(start + QStringLiteral(".err"), answer.errors);
    script(tool, verb,
           "cat \"$answer.out\"\ncat \"$answer.err\" >&2\nexit " + QByteArray::number(answer.code) + '\n');
}

void FakeTools::script(const QString &tool, const QString &verb, const QByteArray &lines)
{
    makeTool(tool);
    write(QStringLiteral("answers/%1.%2.sh").arg(tool, verb), lines);
}

void FakeTools::drop(const QString &tool)
{
    QFile::remove(path(QStringLiteral("bin/") + tool));
}

void FakeTools::answerSearch(const QByteArray &lines)
{
    answer(QStringLiteral("dpkg-query"), QStringLiteral("--search"),
           {lines, "dpkg-query: no path found matching pattern /somewhere\n", 1});
}

void FakeTools::answerFacts(const QStringList &lines)
{
    answer(QStringLiteral("dpkg-query"), QStringLiteral("--show"),
           {(lines.join(u'\n') + u'\n').toUtf8(), {}, 0});
}

QString FakeTools::factsLine(const QString &name, const QString &flags, const QString &provides)
{
    const QString bare = name.section(u':', 0, 0);
    return QStringLiteral("%1\t%2\tinstalled\t%3\t12\t%4")
        .arg(bare, name, QString(flags).replace(u'|', u'\t'), provides);
}

QStringList FakeTools::calls() const
{
    QFile file(path(QStringLiteral("calls")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    lines.removeLast();
    return lines;
}

void FakeTools::forgetCalls()
{
    QFile::remove(path(QStringLiteral("calls")));
}

} // namespace quillbay::testing

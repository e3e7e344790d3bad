#pragma once

#include "platform/linux/packages/PackageSurroundings.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace quillbay::testing {

/// A folder of programs that stand in for the package managers', answer as told, and record each call.
class FakeTools
{
public:
    struct Answer
    {
        QByteArray output;
        QByteArray errors;
        int code = 0;
    };

    FakeTools();

    /// Surroundings that know these programs only: no bus, a home of the folder's own, no file of ours.
    platform::PackageSurroundings surroundings() const;
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QByteArray home() const { return path(QStringLiteral("home")).toUtf8(); }

    /// Makes the program `tool` answer calls whose first argument is `verb`.
    void answer(const QString &tool, const QString &verb, const Answer &answer);
    /// Makes it run these lines of shell instead, with the call's arguments.
    void script(const QString &tool, const QString &verb, const QByteArray &lines);
    void drop(const QString &tool);

    /// One dpkg database: the owner of any file asked for, and the packages with their facts.
    void answerSearch(const QByteArray &lines);
    void answerFacts(const QStringList &lines);
    static QString factsLine(const QString &name, const QString &flags = QStringLiteral("no|no|optional"),
                             const QString &provides = {});

    /// All calls so far: "tool|argument|argument".
    QStringList calls() const;
    void forgetCalls();

private:
    void makeTool(const QString &tool);
    void write(const QString &name, const QByteArray &content) const;

    QTemporaryDir m_folder;
};

} // namespace quillbay::testing

#pragma once

#include <QString>
#include <QStringList>

namespace quillbay::platform {

/// What the field codes of a command line stand for.
struct ExecFields
{
    QString icon; ///< `%i`; empty: the code vanishes.
    QString name; ///< `%c`
    QString path; ///< `%k`
};

/// The command line of a desktop entry, taken apart.
struct ExecLine
{
    QStringList arguments; ///< Program first. Empty if the line cannot be run.
    QString error;         ///< For the log, why it cannot; empty if it can.

    bool isValid() const { return error.isEmpty(); }
};

/// Parses an `Exec` value of the Desktop Entry Specification 1.5 whose string escapes are already undone.
///
/// Quoting is the specification's double quotes, and beyond it what entries in the wild rely on and other
/// desktops take: single quotes, quotes around a part of an argument, a backslash before a single character.
/// Nothing else of a shell: no variables, no tilde, no comments.
///
/// Field codes are expanded after the line is split, so a name or path never changes the number of
/// arguments. The program is started without files: `%f %u %F %U` vanish, as do the withdrawn `%d %D %n %N %v
/// %m`; an argument that is left with nothing vanishes with them. Any other code makes the line invalid.
ExecLine parseExecLine(const QString &exec, const ExecFields &fields);

} // namespace quillbay::platform

#pragma once

#include <QString>

#include <optional>

namespace quillbay {

/// The files that make up one private SQLite database: the main one, and beside it those that SQLite names
/// with the suffixes -wal, -shm and -journal. They belong together: a main file without its journal has lost
/// its last changes, and a journal beside the wrong main file damages it.
///
/// The calls work by path and leave an existing main file closed, so that no lock on it is lost.
/// Thread: any.
class DatabaseFiles
{
public:
    /// A link is followed, as SQLite does: its target is what is made private or set aside.
    explicit DatabaseFiles(const QString &path);

    const QString &path() const { return m_path; }

    /// Whether the main file is missing, or there without a byte.
    bool isMissing() const;
    /// Whether a folder or the like has the main file's name.
    bool isNoFile() const;
    /// Whether the main file is too short for a database (SQLite takes one byte for none), or missing while a
    /// journal with content lies there, which SQLite would throw away.
    bool isRemnant() const;
    /// Whether the main file does not end where a page does, and no journal is there to complete it: SQLite
    /// would take what is missing of the last page for zeros.
    bool isLastPageCutShort(qint64 pageSize) const;

    // The next four answer what went wrong, if anything.

    /// Makes the folders that are missing, 0700.
    std::optional<QString> makeFolder() const;
    /// Gives the main file to the owner alone, and the others the same permissions, as SQLite does when it
    /// makes them.
    std::optional<QString> closeToOthers() const;
    /// Makes an empty main file, 0600; what was left of an earlier one is removed with everything that
    /// belongs to it.
    std::optional<QString> makeEmpty() const;
    /// Renames the main file, which must be closed and without a journal, to the missing one of `target`.
    std::optional<QString> takePlaceOf(const DatabaseFiles &target) const;
    /// Renames every file of the set to one new name beside the old one, ".damaged-" and the time in UTC, so
    /// that the set can still be opened as it was, by its owner. Never replaces a file. Answers the main
    /// file's new path, or nothing where a file could not be renamed; what is left must then not be opened
    /// for writing.
    std::optional<QString> setAside() const;

private:
    QString m_path;
};

} // namespace quillbay

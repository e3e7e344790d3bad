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

    /// Makes missing folders (0700) and a missing main file (0600, empty, which SQLite takes for a new
    /// database), and takes away what group and others may do with files that are there. SQLite gives its
    /// other files the permissions of the main one. Answers what went wrong, if anything.
    std::optional<QString> makePrivate() const;
    /// Whether a journal with content lies beside no or an empty main file: SQLite would throw it away.
    bool isJournalOrphaned() const;
    /// Renames every file of the set to one new name beside the old one, ".damaged-" and the time in UTC, so
    /// that the set can still be opened as it was. Never replaces a file. Answers the main file's new path,
    /// or nothing where a file could not be renamed; what is left must then not be opened for writing.
    std::optional<QString> setAside() const;

private:
    QString m_path;
};

} // namespace quillbay

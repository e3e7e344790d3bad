#pragma once

#include "uninstaller/Receipt.h"

#include <QFile>
#include <QString>
#include <QStringList>

namespace quillbay {

/// The receipts: one file for each run of removals, `removals/TIME-ID.jsonl` in the program's state folder,
/// with a line for each finished removal. Folder 0700, files 0600.
///
/// A line is written by one call, whole, as soon as its removal is done, so that a killed process leaves what
/// it did on record; a torn last line (a full disk) is passed over when reading.
///
/// Thread: one at a time.
class ReceiptStore
{
public:
    /// The folder is made with the first record.
    explicit ReceiptStore(const QString &folder);
    static QString defaultFolder();

    /// Adds to this run's file. False where it could not be written.
    bool append(const RemovalRecord &record);

    /// This run's file; empty before the first record.
    QString path() const { return m_file.fileName(); }

    /// All receipts' files, the oldest first.
    static QStringList files(const QString &folder);
    static Receipt read(const QString &file);

private:
    bool open(const QDateTime &when);

    QString m_folder;
    QFile m_file;
};

} // namespace quillbay

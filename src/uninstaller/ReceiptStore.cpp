#include "uninstaller/ReceiptStore.h"

#include "foundation/StandardFolders.h"
#include "foundation/Uuid.h"

#include <QDir>
#include <QFileInfo>

namespace quillbay {

namespace {

constexpr QFileDevice::Permissions ownFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
constexpr QFileDevice::Permissions ownFolder = ownFile | QFileDevice::ExeOwner;

bool makeFolder(const QString &path)
{
    if (QFileInfo(path).isDir())
        return true;
    const QString above = QFileInfo(path).path();
    return (above == path || makeFolder(above)) && (QDir().mkdir(path, ownFolder) || QFileInfo(path).isDir());
}

} // namespace

ReceiptStore::ReceiptStore(const QString &folder)
    : m_folder(folder)
{
}

QString ReceiptStore::defaultFolder()
{
    return stateFolder() + QStringLiteral("/removals");
}

bool ReceiptStore::open(const QDateTime &when)
{
    if (!makeFolder(m_folder))
        return false;
    m_file.setFileName(QStringLiteral("%1/%2-%3.jsonl")
                           .arg(m_folder, when.toUTC().toString(QStringLiteral("yyyyMMddTHHmmsszzz")),
                                uuidString(QUuid::createUuid()).left(8)));
    return m_file.open(QIODevice::Append | QIODevice::NewOnly | QIODevice::Unbuffered, ownFile);
}

bool ReceiptStore::append(const RemovalRecord &record)
{
    if (!m_file.isOpen() && !open(record.when))
        return false;
    const QByteArray line = encodeRecord(record) + '\n';
    return m_file.write(line) == line.size();
}

QStringList ReceiptStore::files(const QString &folder)
{
    QStringList result;
    const QDir directory(folder);
    for (const QString &name : directory.entryList({QStringLiteral("*.jsonl")}, QDir::Files, QDir::Name))
        result.append(directory.filePath(name));
    return result;
}

Receipt ReceiptStore::read(const QString &file)
{
    Receipt receipt;
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return receipt;
    for (const QByteArray &line : source.readAll().split('\n')) {
        if (const auto record = decodeRecord(line))
            receipt.records.append(*record);
    }
    return receipt;
}

} // namespace quillbay

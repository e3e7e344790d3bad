#include "library/AppFolder.h"

#include "foundation/Uuid.h"
#include "library/AppFolderReader.h"
#include "library/FolderListWriter.h"
#include "library/JsonText.h"

namespace quillbay {

namespace {

void write(JsonText &json, const AppFolder &folder)
{
    json.raw("{\"id\":");
    json.string(uuidString(folder.id));
    json.raw(",\"name\":");
    json.string(folder.name);
    json.raw(",\"appURLs\":[");
    for (qsizetype i = 0; i < folder.appURLs.size(); ++i) {
        if (i > 0)
            json.raw(",");
        json.string(folder.appURLs[i]);
    }
    json.raw(folder.isPinned ? "],\"isPinned\":true" : "],\"isPinned\":false");
    json.raw(",\"icon\":");
    json.string(folder.icon);
    json.raw(",\"color\":");
    json.string(folder.color);
    if (folder.parentFolderID) {
        json.raw(",\"parentFolderID\":");
        json.string(uuidString(*folder.parentFolderID));
    }
    json.raw(",\"createdAt\":");
    json.number(folder.createdAt);
    json.raw(",\"sortOrder\":");
    json.number(qint64(folder.sortOrder));
    json.raw("}");
}

} // namespace

size_t qHash(const AppFolder &folder, size_t seed) noexcept
{
    QtPrivate::QHashCombine combine;
    seed = combine(seed, folder.id);
    seed = combine(seed, folder.name);
    seed = combine(seed, folder.appURLs.size());
    for (const QString &url : folder.appURLs)
        seed = combine(seed, url);
    seed = combine(seed, uchar(folder.isPinned));
    seed = combine(seed, folder.icon);
    seed = combine(seed, folder.color);
    seed = combine(seed, uchar(folder.parentFolderID.has_value()));
    if (folder.parentFolderID)
        seed = combine(seed, *folder.parentFolderID);
    seed = combine(seed, folder.createdAt);
    return combine(seed, folder.sortOrder);
}

QByteArray encodeFolder(const AppFolder &folder, bool *isExact)
{
    JsonText json;
    write(json, folder);
    *isExact = json.isExact();
    return json.take();
}

QByteArray encodeFolders(const QList<AppFolder> &folders, bool *isExact)
{
    return FolderListWriter().write(folders, isExact);
}

Decoded<QList<AppFolder>> decodeFolders(const QByteArray &text)
{
    return AppFolderReader::read(text);
}

} // namespace quillbay

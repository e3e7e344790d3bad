#include "library/AppFolder.h"

#include "foundation/JsonFields.h"
#include "foundation/Uuid.h"

#include <nlohmann/json.hpp>

namespace quillbay {

namespace {

using Json = nlohmann::ordered_json;

Json toJson(const AppFolder &folder)
{
    Json object;
    object["id"] = json::text(uuidString(folder.id));
    object["name"] = json::text(folder.name);
    object["appURLs"] = Json::array();
    for (const QString &url : folder.appURLs)
        object["appURLs"].push_back(json::text(url));
    object["isPinned"] = folder.isPinned;
    object["icon"] = json::text(folder.icon);
    object["color"] = json::text(folder.color);
    if (folder.parentFolderID)
        object["parentFolderID"] = json::text(uuidString(*folder.parentFolderID));
    object["createdAt"] = json::number(folder.createdAt);
    object["sortOrder"] = folder.sortOrder;
    return object;
}

AppFolder fromJson(const Json &value)
{
    const json::Object object(value);
    AppFolder folder;
    folder.id = object.uuid("id");
    folder.name = object.string("name");
    folder.appURLs = object.stringArray("appURLs");
    folder.isPinned = object.boolean("isPinned");
    folder.icon = object.string("icon");
    folder.color = object.string("color");
    if (object.has("parentFolderID"))
        folder.parentFolderID = object.uuid("parentFolderID");
    folder.createdAt = object.number("createdAt");
    if (object.has("sortOrder"))
        folder.sortOrder = object.integer("sortOrder");
    return folder;
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

QByteArray encodeFolders(const QList<AppFolder> &folders)
{
    Json array = Json::array();
    for (const AppFolder &folder : folders)
        array.push_back(toJson(folder));
    return json::dump(array);
}

Decoded<QList<AppFolder>> decodeFolders(const QByteArray &text)
{
    return json::decode<QList<AppFolder>>(text, [](const Json &value) {
        if (!value.is_array())
            throw json::Error{DecodeError::Kind::TypeMismatch, QStringLiteral("Expected an array.")};
        QList<AppFolder> folders;
        for (const Json &element : value)
            folders.append(fromJson(element));
        return folders;
    });
}

} // namespace quillbay

#include "library/GridItemIdentifier.h"

#include "foundation/JsonFields.h"
#include "foundation/Uuid.h"

namespace quillbay {

namespace {

constexpr QLatin1String folderPrefix("folder:");
constexpr QLatin1String categoryPrefix("category:");

} // namespace

std::optional<GridItemIdentifier> GridItemIdentifier::fromString(QStringView text)
{
    if (text.startsWith(folderPrefix)) {
        const std::optional<QUuid> id = uuidFromString(text.mid(folderPrefix.size()));
        return id ? std::optional(folder(*id)) : std::nullopt;
    }
    if (text.startsWith(categoryPrefix))
        return category(text.mid(categoryPrefix.size()).toString());
    return std::nullopt;
}

QUuid GridItemIdentifier::folderID() const
{
    const QUuid *id = std::get_if<QUuid>(&m_payload);
    return id ? *id : QUuid();
}

QString GridItemIdentifier::categoryName() const
{
    const QString *name = std::get_if<QString>(&m_payload);
    return name ? *name : QString();
}

QString GridItemIdentifier::stringRepresentation() const
{
    return tag() == Tag::Folder ? folderPrefix + uuidString(folderID()) : categoryPrefix + categoryName();
}

QByteArray GridItemIdentifier::encoded() const
{
    json::Json value;
    if (tag() == Tag::Folder)
        value["folder"]["id"] = json::text(uuidString(folderID()));
    else
        value["category"]["name"] = json::text(categoryName());
    return json::dump(value);
}

Decoded<GridItemIdentifier> GridItemIdentifier::decode(const QByteArray &text)
{
    return json::decode<GridItemIdentifier>(text, [](const json::Json &value) {
        const json::Object object(value);
        // Keys that name no case do not count: what is left must be exactly one.
        const bool isFolder = value.contains("folder");
        const bool isCategory = value.contains("category");
        if (isFolder == isCategory)
            throw json::Error{DecodeError::Kind::TypeMismatch,
                              QStringLiteral("Invalid number of keys found, expected one.")};
        if (isFolder)
            return folder(json::Object(value["folder"]).uuid("id"));
        return category(json::Object(value["category"]).string("name"));
    });
}

} // namespace quillbay

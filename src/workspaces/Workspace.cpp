#include "workspaces/Workspace.h"

#include "foundation/JsonFields.h"
#include "foundation/Uuid.h"

namespace quillbay {

using json::Json;

QByteArray encodeWorkspaces(const QList<Workspace> &workspaces)
{
    Json array = Json::array();
    for (const Workspace &workspace : workspaces) {
        Json object;
        object["id"] = json::text(uuidString(workspace.id));
        object["name"] = json::text(workspace.name);
        object["icon"] = json::text(workspace.icon);
        object["color"] = json::text(workspace.color);
        array.push_back(std::move(object));
    }
    return json::dump(array);
}

Decoded<QList<Workspace>> decodeWorkspaces(const QByteArray &text)
{
    return json::decode<QList<Workspace>>(text, [](const Json &value) {
        if (!value.is_array())
            throw json::Error{DecodeError::Kind::TypeMismatch, QStringLiteral("Expected an array.")};
        QList<Workspace> workspaces;
        for (const Json &element : value) {
            const json::Object object(element);
            workspaces.append(
                {object.uuid("id"), object.string("name"), object.string("icon"), object.string("color")});
        }
        return workspaces;
    });
}

} // namespace quillbay

#include "workspaces/CodeSnippet.h"

#include "foundation/JsonFields.h"
#include "foundation/Uuid.h"

namespace quillbay {

using json::Json;

QByteArray encodeCodeSnippets(const QList<CodeSnippet> &snippets)
{
    Json array = Json::array();
    for (const CodeSnippet &snippet : snippets) {
        Json object;
        object["id"] = json::text(uuidString(snippet.id));
        object["title"] = json::text(snippet.title);
        object["code"] = json::text(snippet.code);
        object["language"] = json::text(snippet.language);
        array.push_back(std::move(object));
    }
    return json::dump(array);
}

Decoded<QList<CodeSnippet>> decodeCodeSnippets(const QByteArray &text)
{
    return json::decode<QList<CodeSnippet>>(text, [](const Json &value) {
        if (!value.is_array())
            throw json::Error{DecodeError::Kind::TypeMismatch, QStringLiteral("Expected an array.")};
        QList<CodeSnippet> snippets;
        snippets.reserve(qsizetype(value.size()));
        for (const Json &element : value) {
            const json::Object object(element);
            snippets.append({object.uuid("id"), object.string("title"), object.string("code"),
                             object.string("language")});
        }
        return snippets;
    });
}

} // namespace quillbay

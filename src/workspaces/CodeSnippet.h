#pragma once

#include "foundation/Decoding.h"

#include <QByteArray>
#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QUuid>

namespace quillbay {

/// A short piece of code to copy from. Equality and hash look at every field.
struct CodeSnippet
{
    QUuid id;
    QString title;
    QString code;
    QString language; ///< Any text, or none.

    friend bool operator==(const CodeSnippet &, const CodeSnippet &) = default;
    friend size_t qHash(const CodeSnippet &snippet, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, snippet.id, snippet.title, snippet.code, snippet.language);
    }
};

/// JSON of a list: an array of objects with the keys "id", "title", "code", "language", in that order.
QByteArray encodeCodeSnippets(const QList<CodeSnippet> &snippets);

/// The reverse. All four keys are required, unknown ones are ignored; one bad record fails the whole.
Decoded<QList<CodeSnippet>> decodeCodeSnippets(const QByteArray &json);

} // namespace quillbay

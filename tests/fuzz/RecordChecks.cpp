#include "foundation/JsonFields.h"
#include "fuzz/Checks.h"
#include "library/AppFolder.h"
#include "library/GridItemIdentifier.h"
#include "workspaces/Workspace.h"

#include <algorithm>

namespace quillbay::testing {

namespace {

bool isJson(const QByteArray &text)
{
    return json::Json::accept(text.cbegin(), text.cend());
}

/// Field by field: folders with equal identifiers are equal otherwise.
bool isSame(const AppFolder &a, const AppFolder &b)
{
    return a.id == b.id && a.name == b.name && a.appURLs == b.appURLs && a.isPinned == b.isPinned &&
           a.icon == b.icon && a.color == b.color && a.parentFolderID == b.parentFolderID &&
           a.createdAt == b.createdAt && a.sortOrder == b.sortOrder;
}

} // namespace

const char *checkFolders(const QByteArray &input)
{
    const auto decoded = decodeFolders(input);
    const QList<AppFolder> *folders = decodedValue(decoded);
    if (!folders)
        return nullptr;
    if (!isJson(input))
        return "what is no JSON was taken";
    bool isExact = false;
    const auto again = decodeFolders(encodeFolders(*folders, &isExact));
    const QList<AppFolder> *same = decodedValue(again);
    if (!isExact || !same ||
        !std::equal(folders->cbegin(), folders->cend(), same->cbegin(), same->cend(), isSame))
        return "a written list reads back as something else";
    return nullptr;
}

const char *checkWorkspaces(const QByteArray &input)
{
    const auto decoded = decodeWorkspaces(input);
    const QList<Workspace> *workspaces = decodedValue(decoded);
    if (!workspaces)
        return nullptr;
    if (!isJson(input))
        return "what is no JSON was taken";
    const auto again = decodeWorkspaces(encodeWorkspaces(*workspaces));
    if (!decodedValue(again) || *decodedValue(again) != *workspaces)
        return "a written list reads back as something else";
    return nullptr;
}

const char *checkGrid(const QByteArray &input)
{
    const auto parsed = GridItemIdentifier::fromString(QString::fromUtf8(input));
    if (parsed && GridItemIdentifier::fromString(parsed->stringRepresentation()) != parsed)
        return "the string form is another cell";
    const auto decoded = GridItemIdentifier::decode(input);
    for (const GridItemIdentifier *cell : {parsed ? &*parsed : nullptr, decodedValue(decoded)}) {
        if (!cell)
            continue;
        const auto again = GridItemIdentifier::decode(cell->encoded());
        if (!decodedValue(again) || !(*decodedValue(again) == *cell))
            return "the encoded form is another cell";
    }
    return nullptr;
}

} // namespace quillbay::testing

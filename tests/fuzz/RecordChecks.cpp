#include "foundation/JsonFields.h"
#include "fuzz/Checks.h"
#include "library/AppFolder.h"
#include "library/GridItemIdentifier.h"
#include "workspaces/Workspace.h"

namespace quillbay::testing {

namespace {

const char *checkText(const QByteArray &input, const QByteArray &written, const QByteArray &writtenAgain)
{
    if (!json::Json::accept(input.cbegin(), input.cend()))
        return "what is no JSON was taken";
    return written == writtenAgain ? nullptr : "reads back as something else";
}

} // namespace

const char *checkFolders(const QByteArray &input)
{
    const auto decoded = decodeFolders(input);
    const QList<AppFolder> *folders = decodedValue(decoded);
    if (!folders)
        return nullptr;
    bool isExact = false;
    const QByteArray text = encodeFolders(*folders, &isExact);
    if (!isExact)
        return "a folder that was read cannot be written";
    const auto again = decodeFolders(text);
    if (!decodedValue(again))
        return "a written list cannot be read";
    return checkText(input, text, encodeFolders(*decodedValue(again)));
}

const char *checkWorkspaces(const QByteArray &input)
{
    const auto decoded = decodeWorkspaces(input);
    const QList<Workspace> *workspaces = decodedValue(decoded);
    if (!workspaces)
        return nullptr;
    const QByteArray text = encodeWorkspaces(*workspaces);
    const auto again = decodeWorkspaces(text);
    if (!decodedValue(again) || *decodedValue(again) != *workspaces)
        return "a written list reads back as something else";
    return checkText(input, text, encodeWorkspaces(*decodedValue(again)));
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

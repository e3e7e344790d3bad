#include "app/SelectionKey.h"

#include "foundation/Uuid.h"

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

using Case = SidebarSelection::Case;

constexpr std::pair<Case, QLatin1StringView> plainKeys[] = {
    {Case::allApps, QLatin1StringView("allApps")}, {Case::newlyAdded, QLatin1StringView("newlyAdded")},
    {Case::recents, QLatin1StringView("recents")}, {Case::favorites, QLatin1StringView("favorites")},
    {Case::hidden, QLatin1StringView("hidden")},
};
constexpr QLatin1StringView folderPrefix("folder:");
constexpr QLatin1StringView categoryPrefix("category:");

} // namespace

QString selectionKey(const std::optional<SidebarSelection> &selection)
{
    if (!selection)
        return {};
    if (const AppFolder *folder = selection->folder())
        return folderPrefix + uuidString(folder->id);
    if (selection->which() == Case::category)
        return categoryPrefix + selection->categoryName();
    for (const auto &[which, key] : plainKeys) {
        if (which == selection->which())
            return key;
    }
    return {};
}

std::optional<SidebarSelection> selectionOfKey(const QString &key, const QList<AppFolder> &folders)
{
    for (const auto &[which, name] : plainKeys) {
        if (key == name)
            return SidebarSelection(which);
    }
    if (key.startsWith(categoryPrefix))
        return SidebarSelection::ofCategory(key.mid(categoryPrefix.size()));
    const auto id = key.startsWith(folderPrefix) ? uuidFromString(QStringView(key).mid(folderPrefix.size()))
                                                 : std::nullopt;
    const auto folder = std::find_if(folders.cbegin(), folders.cend(),
                                     [&id](const AppFolder &entry) { return entry.id == id; });
    return folder == folders.cend() ? std::nullopt : std::optional(SidebarSelection::ofFolder(*folder));
}

} // namespace quillbay

#include "uninstaller/ResidualCategory.h"

namespace quillbay {

namespace {

struct Look
{
    const char *name;
    const char *icon;
    const char *color;
};

constexpr std::array<Look, allResidualCategories.size()> looks{{
    {"Application", "app.fill", "#FF3B30"},
    {"Preferences", "slider.horizontal.3", "#007AFF"},
    {"Application Support", "folder.fill", "#5856D6"},
    {"Caches", "internaldrive.fill", "#FF9500"},
    {"Logs", "doc.text.fill", "#34C759"},
    {"Containers", "shippingbox.fill", "#30B0C7"},
    {"Group Containers", "square.grid.2x2.fill", "#30B0C7"},
    {"Launch Agents & Daemons", "bolt.fill", "#FF2D55"},
    {"Crash Reports", "exclamationmark.triangle.fill", "#FF6B35"},
    {"Saved State", "externaldrive.badge.timemachine", "#8E8E93"},
    {"Extensions", "puzzlepiece.extension.fill", "#AF52DE"},
    {"Receipts", "doc.badge.checkmark", "#32ADE6"},
    {"Other", "archivebox.fill", "#8E8E93"},
}};

const Look &look(ResidualCategory category)
{
    return looks[size_t(category)];
}

} // namespace

QString rawValue(ResidualCategory category)
{
    return QString::fromLatin1(look(category).name);
}

QString systemIconName(ResidualCategory category)
{
    return QString::fromLatin1(look(category).icon);
}

QString accentColor(ResidualCategory category)
{
    return QString::fromLatin1(look(category).color);
}

} // namespace quillbay

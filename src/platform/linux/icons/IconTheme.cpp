#include "platform/linux/icons/IconTheme.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <optional>
#include <utility>

namespace quillbay::platform {

namespace {

constexpr qsizetype mostFolders = 4096;
constexpr int smallestDrawing = 32;

using Group = QHash<QByteArray, QByteArray>;

QHash<QByteArray, Group> parseGroups(const QByteArray &text)
{
    QHash<QByteArray, Group> groups;
    Group *group = nullptr;
    for (const QByteArray &raw : text.split('\n')) {
        const QByteArray line = raw.trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (line.startsWith('[') && line.endsWith(']')) {
            group = &groups[line.sliced(1, line.size() - 2)];
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (group && equals > 0)
            group->insert(line.first(equals).trimmed(), line.sliced(equals + 1).trimmed());
    }
    return groups;
}

bool staysInside(const QByteArray &path)
{
    return !path.isEmpty() && !path.startsWith('/') && !path.split('/').contains("..");
}

int number(const Group &group, const char *key, int fallback, int low, int high)
{
    bool ok = false;
    const int value = group.value(key).toInt(&ok);
    return ok ? std::clamp(value, low, high) : fallback;
}

std::optional<IconThemeFolder> parseFolder(const QByteArray &path, const Group &group)
{
    const int size = number(group, "Size", 0, 0, 4096);
    if (size == 0)
        return std::nullopt;
    const int scale = number(group, "Scale", 1, 1, 16);
    const QByteArray type = group.value("Type");
    IconThemeFolder folder;
    folder.path = path;
    folder.size = folder.minSize = folder.maxSize = size * scale;
    folder.applications = group.value("Context").compare("Applications", Qt::CaseInsensitive) == 0;
    if (type == "Scalable") {
        folder.type = IconThemeFolder::Type::Scalable;
        folder.minSize = number(group, "MinSize", size, 1, 4096) * scale;
        folder.maxSize = number(group, "MaxSize", size, 1, 4096) * scale;
    } else if (type == "Fixed") {
        folder.type = IconThemeFolder::Type::Fixed;
    } else {
        const int threshold = number(group, "Threshold", 2, 0, 4096);
        folder.minSize = std::max(1, size - threshold) * scale;
        folder.maxSize = (size + threshold) * scale;
    }
    return folder;
}

} // namespace

IconTheme parseIconTheme(const QByteArray &text)
{
    const QHash<QByteArray, Group> groups = parseGroups(text);
    const Group head = groups.value("Icon Theme");
    IconTheme theme;
    for (const QByteArray &name : head.value("Inherits").split(',')) {
        if (!name.trimmed().isEmpty())
            theme.inherits << QString::fromUtf8(name.trimmed());
    }
    QList<QByteArray> paths =
        head.value("Directories").split(',') + head.value("ScaledDirectories").split(',');
    paths.resize(std::min(paths.size(), mostFolders));
    QSet<QByteArray> seen;
    for (const QByteArray &raw : std::as_const(paths)) {
        const QByteArray path = raw.trimmed();
        if (!staysInside(path) || seen.contains(path))
            continue;
        seen.insert(path);
        if (std::optional<IconThemeFolder> folder = parseFolder(path, groups.value(path)))
            theme.folders.push_back(std::move(*folder));
    }
    return theme;
}

IconTheme usualHicolorTheme()
{
    IconTheme theme;
    for (const int size : {16, 22, 24, 32, 36, 48, 64, 72, 96, 128, 192, 256, 512, 1024}) {
        const QByteArray edge = QByteArray::number(size);
        theme.folders.push_back(
            {edge + 'x' + edge + "/apps", size, size, size, IconThemeFolder::Type::Fixed, true});
    }
    theme.folders.push_back({"scalable/apps", 128, 1, 4096, IconThemeFolder::Type::Scalable, true});
    return theme;
}

IconRank rankIcon(const IconThemeFolder &folder, bool drawing, int edge)
{
    enum { Exact, DrawnForSize, Drawn, Larger, Smaller };
    constexpr int beyondAnyLarger = 1 << 20;

    const bool other = !folder.applications;
    const int distance = folder.size >= edge ? folder.size - edge : beyondAnyLarger - folder.size;
    if (folder.size == edge)
        return {other, Exact, 0};
    if (drawing && folder.minSize <= edge && edge <= folder.maxSize)
        return {other, DrawnForSize, distance};
    if (drawing && folder.maxSize >= smallestDrawing)
        return {other, Drawn, distance};
    return {other, folder.size > edge ? Larger : Smaller, distance};
}

} // namespace quillbay::platform

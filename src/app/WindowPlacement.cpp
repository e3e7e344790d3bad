#include "app/WindowPlacement.h"

#include "foundation/StandardFolders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>

namespace quillbay {

namespace {

/// No screen is larger; no file of ours is either.
constexpr int absurdEdge = 65536;
constexpr qint64 largestFile = 4096;
/// How much of the header bar must be on a screen, so that the window can be taken hold of.
constexpr int reachable = 64;

QString placementFile()
{
    return stateFolder() + QStringLiteral("/window.json");
}

std::optional<int> coordinate(const QJsonValue &value)
{
    const double number = value.toDouble(absurdEdge);
    if (!(number > -absurdEdge && number < absurdEdge))
        return std::nullopt;
    return int(number);
}

} // namespace

WindowPlacement firstPlacement(const QRect &screen)
{
    const QRect area = screen.isEmpty() ? QRect(0, 0, 1440, 900) : screen;
    const QSize size(area.width() * 3 / 4, area.height() * 3 / 4);
    QRect frame(QPoint(), size.expandedTo(smallestWindow));
    frame.moveCenter(area.center());
    return {frame.size(), frame.topLeft(), false};
}

WindowPlacement restoredPlacement(WindowPlacement stored, const QList<QRect> &screens)
{
    stored.size = stored.size.expandedTo(smallestWindow);
    if (stored.position) {
        const QRect header(*stored.position, QSize(stored.size.width(), reachable));
        const bool visible = std::any_of(screens.cbegin(), screens.cend(), [&header](const QRect &screen) {
            const QRect seen = header & screen;
            return seen.width() >= reachable && seen.height() >= reachable / 2;
        });
        if (!visible)
            stored.position.reset();
    }
    return stored;
}

QByteArray encodePlacement(const WindowPlacement &placement)
{
    QJsonObject object{{QStringLiteral("width"), placement.size.width()},
                       {QStringLiteral("height"), placement.size.height()},
                       {QStringLiteral("maximized"), placement.maximized}};
    if (placement.position) {
        object[QStringLiteral("x")] = placement.position->x();
        object[QStringLiteral("y")] = placement.position->y();
    }
    if (placement.sidebarWidth)
        object[QStringLiteral("sidebar")] = *placement.sidebarWidth;
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<WindowPlacement> decodePlacement(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const std::optional<int> width = coordinate(object[QLatin1String("width")]);
    const std::optional<int> height = coordinate(object[QLatin1String("height")]);
    if (width.value_or(0) <= 0 || height.value_or(0) <= 0)
        return std::nullopt;
    WindowPlacement placement{QSize(*width, *height), std::nullopt,
                              object[QLatin1String("maximized")].toBool()};
    const std::optional<int> x = coordinate(object[QLatin1String("x")]);
    const std::optional<int> y = coordinate(object[QLatin1String("y")]);
    if (x && y)
        placement.position = QPoint(*x, *y);
    placement.sidebarWidth = coordinate(object[QLatin1String("sidebar")]);
    return placement;
}

std::optional<WindowPlacement> loadPlacement()
{
    QFile file(placementFile());
    if (!QFileInfo(file).isFile() || file.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return decodePlacement(file.readAll());
}

bool savePlacement(const WindowPlacement &placement)
{
    if (!QDir().mkpath(stateFolder()))
        return false;
    QSaveFile file(placementFile());
    const QByteArray json = encodePlacement(placement);
    return file.open(QIODevice::WriteOnly) && file.write(json) == json.size() && file.commit();
}

} // namespace quillbay

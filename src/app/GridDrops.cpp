#include "app/GridDrops.h"

#include "app/QuillbayViewModel.h"
#include "foundation/Uuid.h"

#include <algorithm>

namespace quillbay {

namespace {

/// Where the move rule has to put an element so that it ends at the target's place.
qsizetype destination(qsizetype source, qsizetype target)
{
    return source < target ? target + 1 : target;
}

} // namespace

GridDrops::GridDrops(QuillbayViewModel &viewModel, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
{
}

std::optional<AppFolder> GridDrops::currentFolder(const QString &id) const
{
    const std::optional<QUuid> wanted = uuidFromString(id);
    const QList<AppFolder> &folders = m_viewModel.appFinder()->folders();
    const auto found = std::find_if(folders.cbegin(), folders.cend(),
                                    [&wanted](const AppFolder &folder) { return folder.id == wanted; });
    return found == folders.cend() ? std::nullopt : std::optional(*found);
}

std::optional<AppItem> GridDrops::appOfPath(const QString &path) const
{
    const AppFinder &finder = *m_viewModel.appFinder();
    const qsizetype place = finder.index().ofPath(path);
    return place < 0 ? std::nullopt : std::optional(finder.apps()[place]);
}

void GridDrops::addLater(const AppItem &app, const AppFolder &folder)
{
    QMetaObject::invokeMethod(
        this, [this, app, folder] { m_viewModel.addAppToFolder(app, folder); }, Qt::QueuedConnection);
}

QUrl GridDrops::beginAppDrag(const QString &path)
{
    const std::optional<AppItem> app = appOfPath(path);
    if (!app)
        return {};
    m_viewModel.setDraggedApp(app);
    return app->url();
}

bool GridDrops::takesText(const QString &text) const
{
    return !text.isEmpty() && !GridItemIdentifier::fromString(text);
}

bool GridDrops::dropOnTile(const QList<QUrl> &urls, const QString &targetPath, const QString &folder)
{
    const std::optional<AppFolder> current = currentFolder(folder);
    if (urls.isEmpty() || !current)
        return false;
    const std::optional<AppItem> app = appOfPath(urls.first().path());
    const std::optional<AppItem> target = appOfPath(targetPath);
    if (!app || !target)
        return false;
    const qsizetype from = current->appURLs.indexOf(app->absoluteString());
    const qsizetype to = current->appURLs.indexOf(target->absoluteString());
    if (from < 0 || to < 0)
        return false;
    m_viewModel.appFinder()->reorderAppsInFolder(*current, {from}, destination(from, to));
    return true;
}

bool GridDrops::movesOnHover(const QString &targetPath, const QString &folder) const
{
    return !folder.isEmpty() && m_viewModel.draggedApp() && m_viewModel.draggedApp()->path != targetPath;
}

void GridDrops::hoverOnTile(const QString &targetPath, const QString &folder)
{
    const std::optional<AppFolder> current = currentFolder(folder);
    const std::optional<AppItem> target = appOfPath(targetPath);
    if (movesOnHover(targetPath, folder) && current && target)
        m_viewModel.moveFolderApp(*m_viewModel.draggedApp(), *target, *current);
}

bool GridDrops::dropOnFolderCard(const QList<QUrl> &urls, const QString &folder)
{
    const std::optional<AppFolder> current = currentFolder(folder);
    if (!current || urls.isEmpty() || !urls.first().isLocalFile())
        return false;
    const std::optional<AppItem> app = appOfPath(urls.first().path());
    if (!app)
        return false;
    addLater(*app, *current);
    return true;
}

bool GridDrops::dropTextOnFolder(const QString &text, const QString &folder)
{
    const QUrl url(text);
    const std::optional<AppFolder> current = currentFolder(folder);
    const std::optional<AppItem> app = url.isLocalFile() ? appOfPath(url.path()) : std::nullopt;
    if (current && app)
        addLater(*app, *current);
    return true;
}

bool GridDrops::dropOnCell(const QString &text, const QString &target)
{
    const std::optional<GridItemIdentifier> dragged = GridItemIdentifier::fromString(text);
    const std::optional<GridItemIdentifier> place = GridItemIdentifier::fromString(target);
    if (!dragged || !place)
        return false;
    const QList<GridItemIdentifier> items = m_viewModel.unifiedGridItems()->items();
    const qsizetype from = items.indexOf(*dragged);
    const qsizetype to = items.indexOf(*place);
    if (from < 0 || to < 0)
        return false;
    m_viewModel.appFinder()->reorderUnifiedItems({from}, destination(from, to), items);
    return true;
}

} // namespace quillbay

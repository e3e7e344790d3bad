#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

namespace quillbay {

class QuillbayViewModel;
struct AppFolder;
struct AppItem;

/// What a drag carries and what a drop does. Two payloads, which never mix: an application travels as its
/// file URL (so that other programs take it as well), a card of the unified grid as the text of its
/// identifier. The screens only ask; folders are told by their upper-case identifier, empty for none.
///
/// An operation that returns false did not take the drop, and the desktop lets it fly back. No failure is
/// reported otherwise.
///
/// Thread: main thread.
class GridDrops : public QObject
{
    Q_OBJECT

public:
    /// The view model must outlive this object.
    explicit GridDrops(QuillbayViewModel &viewModel, QObject *parent = nullptr);

    /// A drag of that application begins: it becomes `draggedApp`, which stays after the drag. The file URL
    /// that the drag carries; empty for an unknown path, which starts none.
    Q_INVOKABLE QUrl beginAppDrag(const QString &path);

    /// Whether a place that takes applications as text may take this: any text but that of a card.
    Q_INVOKABLE bool takesText(const QString &text) const;

    /// The first URL's application takes the place of the target inside the folder: behind the target when it
    /// comes from before it, else before it.
    Q_INVOKABLE bool dropOnTile(const QList<QUrl> &urls, const QString &targetPath, const QString &folder);
    /// Whether resting on that tile is going to move something: in a folder, with a dragged application other
    /// than the tile's own.
    Q_INVOKABLE bool movesOnHover(const QString &targetPath, const QString &folder) const;
    /// The pointer has rested on a tile: the dragged application goes before it when it comes from before it,
    /// and in its place otherwise, at once.
    Q_INVOKABLE void hoverOnTile(const QString &targetPath, const QString &folder);
    /// Adds the first URL's application to the folder, in the next turn of the event loop.
    Q_INVOKABLE bool dropOnFolderCard(const QList<QUrl> &urls, const QString &folder);
    /// Adds the application whose URL the text is, in the next turn of the event loop. Taken in any case.
    Q_INVOKABLE bool dropTextOnFolder(const QString &text, const QString &folder);
    /// The card with the text's identifier takes the place of the target in the unified grid: behind the
    /// target when it comes from before it, else before it. Both by `stringRepresentation`.
    Q_INVOKABLE bool dropOnCell(const QString &text, const QString &target);

private:
    std::optional<AppFolder> currentFolder(const QString &id) const;
    std::optional<AppItem> appOfPath(const QString &path) const;
    void addLater(const AppItem &app, const AppFolder &folder);

    QuillbayViewModel &m_viewModel;
};

} // namespace quillbay

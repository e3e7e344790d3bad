#pragma once

#include "library/AppItem.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QUuid>

namespace quillbay {

class AppFinder;
class AppListModel;
class QuillbayViewModel;
struct AppFolder;

/// The applications of each folder as a model, made when it is first asked for. They follow the library from
/// the event loop.
///
/// Folders are told by their upper-case identifier. Thread: main thread.
class FolderContents : public QObject
{
    Q_OBJECT

public:
    /// The view model must outlive this object.
    explicit FolderContents(const QuillbayViewModel &viewModel, QObject *parent = nullptr);

    /// The members that are installed and not hidden, in their order; those of a hidden folder with the
    /// hidden ones, unless the hidden list is locked. Null where there is no such folder. Owned by this
    /// object, and ended once the folder is gone.
    Q_INVOKABLE quillbay::AppListModel *apps(const QString &folderId);
    /// Empty where there is no such folder.
    Q_INVOKABLE QString name(const QString &folderId) const;

private:
    struct Content
    {
        AppListModel *model = nullptr;
        // What it was made of.
        QStringList members;
        QList<AppItem> apps;
        QSet<QString> hidden;
    };

    const AppFolder *folder(const QUuid &id) const;
    void fill(Content &content, const AppFolder &folder) const;
    void scheduleUpdate();
    void update();

    const QuillbayViewModel &m_viewModel;
    const AppFinder &m_finder;
    QHash<QUuid, Content> m_contents;
    bool m_isScheduled = false;
};

} // namespace quillbay

#pragma once

#include "app/AppListModel.h"

#include <QObject>
#include <QPointer>
#include <QString>

namespace quillbay {

class FolderContents;
class QuillbayViewModel;

/// Which card of the grid is expanded. A folder and a category can both be asked for, and stay so through
/// changes of the selection, until they are closed; the folder comes first. What does not exist, or of which
/// nothing is listed, is not shown, and is again when it comes back.
///
/// Thread: main thread.
class ExpandedCard : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isExpanded READ isExpanded NOTIFY changed)
    /// The applications to show, always the same model. A category's stay after it was closed, so that what
    /// shows them need not be made anew for the next.
    Q_PROPERTY(quillbay::AppListModel *apps READ apps CONSTANT)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    /// Upper-case identifier of the shown folder; empty for a category.
    Q_PROPERTY(QString folderId READ folderId NOTIFY changed)

public:
    /// Both must outlive this object.
    ExpandedCard(QuillbayViewModel &viewModel, FolderContents &contents, QObject *parent = nullptr);

    bool isExpanded() const { return m_source; }
    AppListModel *apps() { return &m_apps; }
    QString title() const { return m_title; }
    QString folderId() const { return m_folderId; }

    Q_INVOKABLE void expandFolder(const QString &folderId);
    Q_INVOKABLE void expandCategory(const QString &name);
    /// Closes what is shown: a second call goes on to the other one, if both were asked for.
    Q_INVOKABLE void close();

Q_SIGNALS:
    void changed();

private:
    /// The tiles of one card become those of the next.
    struct ReplacedApps : AppListModel
    {
        ReplacedApps() { setReplacesInPlace(); }
    };

    void update();
    /// What was shown last may be what is hidden now.
    void forget();
    void show(AppListModel *source);

    QuillbayViewModel &m_viewModel;
    FolderContents &m_contents;
    QString m_expandedFolderID;
    QString m_expandedCategoryName;
    QPointer<AppListModel> m_source;
    ReplacedApps m_apps;
    QString m_title;
    QString m_folderId;
};

} // namespace quillbay

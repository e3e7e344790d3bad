#pragma once

#include "app/QuillbayViewModel.h"

#include <QPointer>
#include <QSet>
#include <QStringList>

namespace quillbay {

/// One application that can be put into the folder.
struct PickerEntry
{
    AppItem app;
    bool isSelected = false;
    bool isInFolder = false; ///< It came into the folder since the choice began.
};

inline const QString &listIdentity(const PickerEntry &entry)
{
    return entry.app.path;
}
inline bool looksSame(const PickerEntry &a, const PickerEntry &b)
{
    return a.isSelected == b.isSelected && a.isInFolder == b.isInFolder && looksSame(a.app, b.app);
}

/// The choice of applications for the view model's `folderForPicker`: lists those that are not in it and
/// whose name contains the query. Nothing changes in the library until `addSelected`.
///
/// One object is one choice: it begins when it is given the view model. From then it follows the library, in
/// the next turn of the event loop. Who comes into the folder meanwhile stays in the list but cannot be
/// selected; who is uninstalled leaves it. Thread: main thread.
class AppPicker : public SteppedListModel<PickerEntry>
{
    Q_OBJECT
    /// Set once; must outlive this object.
    Q_PROPERTY(quillbay::QuillbayViewModel *viewModel READ viewModel WRITE setViewModel NOTIFY
                   viewModelChanged REQUIRED)
    /// False where the view model names no folder: then nothing is listed.
    Q_PROPERTY(bool hasFolder READ hasFolder NOTIFY viewModelChanged)
    Q_PROPERTY(QString folderName READ folderName NOTIFY folderNameChanged)
    Q_PROPERTY(QString searchQuery READ searchQuery WRITE setSearchQuery NOTIFY searchQueryChanged)

public:
    enum Role { NameRole = Qt::UserRole + 1, PathRole, IsSelectedRole, IsInFolderRole };

    using SteppedListModel::SteppedListModel;

    QuillbayViewModel *viewModel() const { return m_viewModel; }
    void setViewModel(QuillbayViewModel *viewModel);
    bool hasFolder() const { return !m_folder.id.isNull(); }
    QString folderName() const { return m_folder.name; }
    QString searchQuery() const { return m_searchQuery; }
    void setSearchQuery(const QString &query);

    /// Selects it or not. What the query leaves out keeps its selection.
    Q_INVOKABLE void toggle(const QString &path);
    /// Puts what is selected into the folder, in the order in which it was selected, and ends the choice:
    /// from then on the list stands still.
    Q_INVOKABLE void addSelected();

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void viewModelChanged();
    void folderNameChanged();
    void searchQueryChanged();

private:
    void scheduleUpdate();
    void readLibrary();
    void updateList();

    QPointer<QuillbayViewModel> m_viewModel;
    AppFolder m_folder;       ///< As it is now, or was last.
    QSet<QString> m_excluded; ///< URLs of those that were members at the beginning and have stayed.
    QList<AppItem> m_choices; ///< What is listed without a query.
    QSet<QString> m_inFolder; ///< Paths among them.
    QStringList m_selected;   ///< Paths.
    QString m_searchQuery;
    bool m_isScheduled = false;
};

} // namespace quillbay

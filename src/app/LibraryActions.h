#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

namespace quillbay {

class QuillbayViewModel;
class WorkspaceManager;
struct AppFolder;
struct AppItem;

/// What the screens ask of the library and the workspaces, by the names that they have for things: an
/// application by its path, a folder and a workspace by its upper-case identifier, a selection by its key
/// (`selectionKey`). What is not there is ignored.
///
/// Thread: main thread.
class LibraryActions : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString selection READ selection WRITE setSelection NOTIFY selectionChanged)
    /// The selection's title; "Apps" for none.
    Q_PROPERTY(QString title READ title NOTIFY selectionChanged)
    Q_PROPERTY(bool isAllApps READ isAllApps NOTIFY selectionChanged)
    /// The identifier of the selected folder; empty for every other selection.
    Q_PROPERTY(QString selectedFolder READ selectedFolder NOTIFY selectionChanged)
    /// The order of the grid by its label; writing stores it.
    Q_PROPERTY(QString sortOption READ sortOption WRITE setSortOption NOTIFY sortOptionChanged)
    Q_PROPERTY(QStringList sortOptions READ sortOptions CONSTANT)

public:
    /// Both must outlive this object.
    LibraryActions(QuillbayViewModel &viewModel, WorkspaceManager &workspaces, QObject *parent = nullptr);

    QString selection() const;
    void setSelection(const QString &key);
    QString title() const;
    bool isAllApps() const;
    QString selectedFolder() const;
    QString sortOption() const;
    void setSortOption(const QString &label);
    QStringList sortOptions() const;

    // Applications.
    Q_INVOKABLE bool isFavorite(const QString &path) const;
    Q_INVOKABLE void toggleFavorite(const QString &path);
    Q_INVOKABLE void hideApp(const QString &path);
    Q_INVOKABLE void unhideApp(const QString &path);
    Q_INVOKABLE void addAppToFolder(const QString &path, const QString &folder);
    Q_INVOKABLE void removeAppFromFolder(const QString &path, const QString &folder);

    // Folders.

    /// "name", "icon", "color" and "isPinned"; empty where there is no such folder.
    Q_INVOKABLE QVariantMap folder(const QString &id) const;
    Q_INVOKABLE void createFolder(const QString &name, const QString &icon, const QString &color);
    /// Name, colour and icon, in this order.
    Q_INVOKABLE void editFolder(const QString &id, const QString &name, const QString &icon,
                                const QString &color);
    Q_INVOKABLE void renameFolder(const QString &id, const QString &name);
    Q_INVOKABLE void setFolderColor(const QString &id, const QString &color);
    Q_INVOKABLE void setFolderIcon(const QString &id, const QString &icon);
    Q_INVOKABLE void togglePinFolder(const QString &id);
    Q_INVOKABLE void deleteFolder(const QString &id);
    Q_INVOKABLE void hideFolder(const QString &id);
    Q_INVOKABLE void unhideFolder(const QString &id);
    /// All folders, nested and hidden ones included, each with "id" and "name".
    Q_INVOKABLE QVariantList folders() const;
    /// Opens the sheet that adds applications to a folder.
    Q_INVOKABLE void openPicker(const QString &folder);
    /// Among the root folders: puts the one at `from` before the one at `to`.
    Q_INVOKABLE void moveRootFolder(int from, int to);
    /// A new folder of the category's name, and then all that the grid lists of it into the folder that
    /// stands first: behind a pinned one, that is not the new one.
    Q_INVOKABLE void createFolderFromCategory(const QString &category);
    Q_INVOKABLE void addCategoryToFolder(const QString &category, const QString &folder);

    // Workspaces.
    Q_INVOKABLE void createWorkspace(const QString &name, const QString &icon, const QString &color);
    Q_INVOKABLE void updateWorkspace(const QString &id, const QString &name, const QString &icon,
                                     const QString &color);
    Q_INVOKABLE void deleteWorkspace(const QString &id);
    /// Switches, and goes to all applications.
    Q_INVOKABLE void activateWorkspace(const QString &id);

Q_SIGNALS:
    void selectionChanged();
    void sortOptionChanged();

private:
    template <typename Use>
    void withApp(const QString &path, Use use) const;
    template <typename Use>
    void withFolder(const QString &id, Use use) const;
    template <typename Use>
    void withWorkspace(const QString &id, Use use) const;

    QuillbayViewModel &m_viewModel;
    WorkspaceManager &m_workspaces;
};

} // namespace quillbay

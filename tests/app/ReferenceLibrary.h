#pragma once

#include "library/AppSortOption.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace quillbay::testing {

/// The library's rules once more, as plainly as they can be said: what the real one must agree with after any
/// sequence of operations. Applications are their names, "file:///apps/" and the name their URLs.
struct ReferenceLibrary
{
    struct Folder
    {
        QUuid id;
        QString name;
        QStringList apps;
        bool isPinned = false;
        std::optional<QUuid> parent;
        double createdAt = 0;
        qint64 sortOrder = 0;
    };
    struct Workspace
    {
        QList<Folder> stored; ///< As they were saved last.
        QStringList recents;
        QStringList favourites;
        QStringList gridOrder; ///< String forms.
    };

    QMap<QString, QString> installed; ///< Name to category.
    QHash<QUuid, Workspace> workspaces;
    QUuid active;
    QList<Folder> folders; ///< Of the active workspace, in their order now.
    QSet<QString> hiddenApps;
    QSet<QUuid> hiddenFolders;
    QMap<QString, double> firstSeen;
    QStringList newlyAdded;
    AppSortOption sortOption = AppSortOption::nameAscending;
    AppSortOption storedSortOption = AppSortOption::nameAscending;
    double now = 0;

    Workspace &current() { return workspaces[active]; }
    const Workspace current() const { return workspaces.value(active); }
    Folder *folder(const QUuid &id);

    void save() { current().stored = folders; }
    void sort();
    /// What follows a scan and a change of workspace.
    void reload();

    QStringList apps() const { return installed.keys(); }
    /// Of a stored list, what is installed.
    QStringList shown(const QStringList &stored) const;
    QStringList recents() const { return shown(current().recents); }
    QStringList sorted() const;
    QStringList visible(const QStringList &list) const;
    QList<Folder> roots() const;
    /// The unified grid without the categories that have no place yet, and those categories.
    QStringList arrangedGrid() const;
    QSet<QString> unplacedCategories() const;

    void createFolder(const QUuid &id, const QString &name, const std::optional<QUuid> &parent);
    void reorderFolders(qsizetype from, qsizetype to);
    void reorderGrid(QStringList cells, qsizetype from, qsizetype to);
    void launch(const QString &app);
};

/// Takes one element out and puts it before what stood at `to`.
template <typename List>
void moveOne(List &list, qsizetype from, qsizetype to)
{
    const auto element = list.takeAt(from);
    list.insert(to > from ? to - 1 : to, element);
}

} // namespace quillbay::testing

#pragma once

#include "foundation/ObservableObject.h"
#include "foundation/PreferenceStore.h"
#include "workspaces/Workspace.h"

#include <QList>
#include <QString>
#include <QUuid>

namespace quillbay {

class NotificationCenter;

/// The workspaces, and which of them is active. The active one's identifier is the suffix of every key under
/// which something is kept per workspace: folders, recents, favourites, grid order, notes, snippets, recent
/// colours and measurements. What is installed, hidden or locked is the same in all of them.
///
/// Kept in the preferences: the list under "quillbay_workspaces" (data, see `encodeWorkspaces`), written by
/// the first creation, change or deletion, and the active identifier under "quillbay_active_workspace_id"
/// (string), written by each switch. Nothing here fails visibly: a list that cannot be read counts as none,
/// and then one default workspace takes over what was stored before there were workspaces.
///
/// Thread: main thread. One instance, made before anything reads a key of a workspace; `main` hands it out.
class WorkspaceManager : public ObservableObject
{
    Q_OBJECT

public:
    /// Reads the list, or makes the default one and copies the older unsuffixed values into it. The
    /// notification centre must outlive this object.
    WorkspaceManager(const PreferenceStore &preferences, NotificationCenter &notifications,
                     QObject *parent = nullptr);

    /// In the order of creation.
    const QList<Workspace> &workspaces() const { return m_workspaces; }
    QUuid activeWorkspaceID() const { return m_activeWorkspaceID; }
    /// Switches: stores the identifier and posts `quillbayWorkspaceChanged`, also for the active one.
    void setActiveWorkspaceID(const QUuid &id);

    /// Appends a workspace and switches to it. No text is checked.
    void createWorkspace(const QString &name, const QString &icon, const QString &color);
    /// Replaces the texts of the entry with that `id`, one after the other, each a change of its own; then
    /// switches once more if it is the active one. Unknown identifiers do nothing.
    void updateWorkspace(const Workspace &workspace, const QString &name, const QString &icon,
                         const QString &color);
    /// Removes the entry and what is stored for it, recent colours and measurements excepted; first switches
    /// to the first remaining one if it was active. The last workspace stays.
    void deleteWorkspace(const Workspace &workspace);

    /// `baseKey`, "_" and the active identifier in upper case. Asked for at each read and write: nobody keeps
    /// a copy.
    QString key(const QString &baseKey) const;
    /// The same for any workspace.
    static QString key(const QString &baseKey, const QUuid &id);

Q_SIGNALS:
    void workspacesChanged();
    void activeWorkspaceIDChanged();

private:
    void migrateLegacyData(const QUuid &id);
    void saveWorkspaces();

    PreferenceStore m_preferences;
    NotificationCenter &m_notifications;
    QList<Workspace> m_workspaces;
    QUuid m_activeWorkspaceID;
};

} // namespace quillbay

#include "workspaces/WorkspaceManager.h"

#include "foundation/NotificationCenter.h"
#include "foundation/Uuid.h"

#include <algorithm>

namespace quillbay {

namespace {

const QString workspacesKey = QStringLiteral("quillbay_workspaces");
const QString activeKey = QStringLiteral("quillbay_active_workspace_id");

/// What goes with a deleted workspace, and what is taken over from before there were workspaces.
struct OwnedKey
{
    const char *base;
    bool isData; ///< Else an array of strings.
};
constexpr OwnedKey ownedKeys[] = {
    {"AppFolders", true},        {"recentApps", false},           {"favoriteApps", false},
    {"unifiedGridOrder", false}, {"quillbay_sticky_notes", true}, {"quillbay_code_snippets", true}};

Workspace defaultWorkspace()
{
    return {QUuid(0xD3B07384, 0xD113, 0x4E4E, 0xA3, 0x43, 0xA3, 0x3A, 0x0A, 0x26, 0xF3, 0xD3),
            QStringLiteral("Default"), QStringLiteral("briefcase.fill"), QStringLiteral("#007AFF")};
}

auto entryWith(QList<Workspace> &workspaces, const QUuid &id)
{
    return std::find_if(workspaces.begin(), workspaces.end(),
                        [&id](const Workspace &workspace) { return workspace.id == id; });
}

} // namespace

WorkspaceManager::WorkspaceManager(const PreferenceStore &preferences, NotificationCenter &notifications,
                                   QObject *parent)
    : ObservableObject(parent)
    , m_preferences(preferences)
    , m_notifications(notifications)
{
    const std::optional<QByteArray> stored = m_preferences.data(workspacesKey);
    const auto decoded = stored ? decodeWorkspaces(*stored) : Decoded<QList<Workspace>>(DecodeError{});
    const QList<Workspace> *list = decodedValue(decoded);
    m_workspaces = list ? *list : QList<Workspace>{defaultWorkspace()};

    const std::optional<QUuid> active = uuidFromString(m_preferences.string(activeKey).value_or(QString()));
    if (active && entryWith(m_workspaces, *active) != m_workspaces.end())
        m_activeWorkspaceID = *active;
    else
        m_activeWorkspaceID = m_workspaces.isEmpty() ? QUuid::createUuid() : m_workspaces.first().id;
    if (!list)
        migrateLegacyData(m_activeWorkspaceID);
}

void WorkspaceManager::migrateLegacyData(const QUuid &id)
{
    for (const OwnedKey &owned : ownedKeys) {
        const QString base = QString::fromLatin1(owned.base);
        if (owned.isData) {
            if (const auto value = m_preferences.data(base))
                m_preferences.setData(key(base, id), *value);
        } else if (const auto value = m_preferences.stringArray(base)) {
            m_preferences.setStringArray(key(base, id), *value);
        }
    }
}

void WorkspaceManager::setActiveWorkspaceID(const QUuid &id)
{
    publish(m_activeWorkspaceID, id, &WorkspaceManager::activeWorkspaceIDChanged);
    // A listener may have switched on: what is active is what is stored.
    m_preferences.setString(activeKey, uuidString(m_activeWorkspaceID));
    Q_EMIT m_notifications.quillbayWorkspaceChanged();
}

void WorkspaceManager::createWorkspace(const QString &name, const QString &icon, const QString &color)
{
    const Workspace made{QUuid::createUuid(), name, icon, color};
    publish(m_workspaces, m_workspaces + QList<Workspace>{made}, &WorkspaceManager::workspacesChanged);
    saveWorkspaces();
    setActiveWorkspaceID(made.id);
}

void WorkspaceManager::updateWorkspace(const Workspace &workspace, const QString &name, const QString &icon,
                                       const QString &color)
{
    const QUuid id = workspace.id;
    if (entryWith(m_workspaces, id) == m_workspaces.end())
        return;
    // Copies: the arguments may stand in the list that is about to be replaced.
    const std::pair<QString Workspace::*, QString> texts[] = {
        {&Workspace::name, name}, {&Workspace::icon, icon}, {&Workspace::color, color}};
    for (const auto &[field, text] : texts) {
        QList<Workspace> changed = m_workspaces;
        const auto entry = entryWith(changed, id);
        if (entry == changed.end())
            return; // a listener deleted it
        (*entry).*field = text;
        publish(m_workspaces, std::move(changed), &WorkspaceManager::workspacesChanged);
        saveWorkspaces();
    }
    saveWorkspaces();
    if (id == m_activeWorkspaceID)
        setActiveWorkspaceID(id);
}

void WorkspaceManager::deleteWorkspace(const Workspace &workspace)
{
    if (m_workspaces.size() < 2)
        return;
    const QUuid id = workspace.id;
    const bool wasActive = id == m_activeWorkspaceID;
    QList<Workspace> remaining = m_workspaces;
    remaining.removeIf([&id](const Workspace &entry) { return entry.id == id; });
    publish(m_workspaces, std::move(remaining), &WorkspaceManager::workspacesChanged);
    saveWorkspaces();
    if (wasActive)
        setActiveWorkspaceID(m_workspaces.isEmpty() ? QUuid::createUuid() : m_workspaces.first().id);
    for (const OwnedKey &owned : ownedKeys)
        m_preferences.remove(key(QString::fromLatin1(owned.base), id));
}

void WorkspaceManager::saveWorkspaces()
{
    m_preferences.setData(workspacesKey, encodeWorkspaces(m_workspaces));
}

QString WorkspaceManager::key(const QString &baseKey) const
{
    return key(baseKey, m_activeWorkspaceID);
}

QString WorkspaceManager::key(const QString &baseKey, const QUuid &id)
{
    return baseKey + QLatin1Char('_') + uuidString(id);
}

} // namespace quillbay

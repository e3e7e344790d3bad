#include "app/WorkspaceListModel.h"

#include "workspaces/WorkspaceManager.h"

#include <algorithm>

namespace quillbay {

WorkspaceListModel::WorkspaceListModel(const WorkspaceManager &manager, QObject *parent)
    : SteppedListModel(parent)
    , m_manager(manager)
{
    connect(&m_manager, &WorkspaceManager::workspacesChanged, this, &WorkspaceListModel::update);
    connect(&m_manager, &WorkspaceManager::activeWorkspaceIDChanged, this, [this] {
        update();
        if (count() > 0)
            Q_EMIT dataChanged(index(0), index(count() - 1), {IsActiveRole});
    });
    update();
}

void WorkspaceListModel::update()
{
    setItems(m_manager.workspaces());
    const auto active = std::find_if(items().cbegin(), items().cend(), [this](const Workspace &workspace) {
        return workspace.id == m_manager.activeWorkspaceID();
    });
    m_shown = active != items().cend() ? *active
              : !items().isEmpty()     ? items().first()
                                       : Workspace{QUuid::createUuid(), QStringLiteral("Default"),
                                               QStringLiteral("briefcase.fill"), QStringLiteral("#007AFF")};
    Q_EMIT shownChanged();
}

QVariant WorkspaceListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Workspace &workspace = items()[index.row()];
    switch (role) {
    case WorkspaceIdRole:
        return uuidString(workspace.id);
    case Qt::DisplayRole:
    case NameRole:
        return workspace.name;
    case IconRole:
        return workspace.icon;
    case ColorRole:
        return workspace.color;
    case IsActiveRole:
        return workspace.id == m_manager.activeWorkspaceID();
    default:
        return {};
    }
}

QHash<int, QByteArray> WorkspaceListModel::roleNames() const
{
    return {{WorkspaceIdRole, "workspaceId"},
            {NameRole, "name"},
            {IconRole, "icon"},
            {ColorRole, "color"},
            {IsActiveRole, "isActive"}};
}

} // namespace quillbay

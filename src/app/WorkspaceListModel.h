#pragma once

#include "app/SteppedListModel.h"
#include "foundation/Uuid.h"
#include "workspaces/Workspace.h"

namespace quillbay {

class WorkspaceManager;

inline const QUuid &listIdentity(const Workspace &workspace)
{
    return workspace.id;
}
inline bool looksSame(const Workspace &a, const Workspace &b)
{
    return a == b;
}

/// The workspaces as the switcher lists them, and the one that it shows: the active one, else the first, else
/// a made-up default. Follows the manager. Thread: main thread.
class WorkspaceListModel : public SteppedListModel<Workspace>
{
    Q_OBJECT
    /// Said once more: the tools do not see through the template.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// Upper-case identifier.
    Q_PROPERTY(QString shownId READ shownId NOTIFY shownChanged)
    Q_PROPERTY(QString shownName READ shownName NOTIFY shownChanged)
    Q_PROPERTY(QString shownIcon READ shownIcon NOTIFY shownChanged)
    Q_PROPERTY(QString shownColor READ shownColor NOTIFY shownChanged)

public:
    enum Role {
        WorkspaceIdRole = Qt::UserRole + 1, ///< Upper-case identifier.
        NameRole,
        IconRole,  ///< Name of a system symbol.
        ColorRole, ///< Stored colour text.
        IsActiveRole,
    };

    /// The manager must outlive this object.
    explicit WorkspaceListModel(const WorkspaceManager &manager, QObject *parent = nullptr);

    QString shownId() const { return uuidString(m_shown.id); }
    QString shownName() const { return m_shown.name; }
    QString shownIcon() const { return m_shown.icon; }
    QString shownColor() const { return m_shown.color; }

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void shownChanged();

private:
    void update();

    const WorkspaceManager &m_manager;
    Workspace m_shown;
};

} // namespace quillbay

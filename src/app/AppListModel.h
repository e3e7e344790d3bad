#pragma once

#include "app/SteppedListModel.h"
#include "library/AppItem.h"

namespace quillbay {

/// Which rows are the same application.
inline const QString &listIdentity(const AppItem &app)
{
    return app.path;
}

/// Applications as a model for QML: what the grid lists, what a card holds. Thread: main thread.
class AppListModel : public SteppedListModel<AppItem>
{
    Q_OBJECT
    /// Said again, since the type's description ends at a base that is a template.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role { NameRole = Qt::UserRole + 1, PathRole, CategoryRole };

    using SteppedListModel::SteppedListModel;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

} // namespace quillbay

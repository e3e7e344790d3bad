#pragma once

#include "library/AppItem.h"

#include <QAbstractListModel>
#include <QList>

namespace quillbay {

/// The applications that the grid lists, as a model for QML.
///
/// A new list is compared with the old one and becomes a few insertions, removals and data changes, so that
/// tiles that stay keep their state; where it would be many, one removal and one insertion replace what lies
/// between the common ends. Thread: main thread.
class AppListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role { NameRole = Qt::UserRole + 1, PathRole, CategoryRole };

    using QAbstractListModel::QAbstractListModel;

    const QList<AppItem> &items() const { return m_items; }
    int count() const { return int(m_items.size()); }

    /// Assigns the list in the smallest steps.
    void setItems(const QList<AppItem> &items);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Up to this many insertions and removals are sent one by one.
    static constexpr int mostSteps = 24;

Q_SIGNALS:
    void countChanged();

private:
    void replaceMiddle(const QList<AppItem> &items);

    QList<AppItem> m_items;
};

} // namespace quillbay

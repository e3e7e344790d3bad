#pragma once

#include "uninstaller/AppResidualFile.h"

#include <QAbstractListModel>
#include <QList>
#include <QString>

namespace quillbay {

/// What the heading of one category of rows shows.
struct ResidualCategorySummary
{
    Q_GADGET
    Q_PROPERTY(QString icon MEMBER icon)
    Q_PROPERTY(QString accentColor MEMBER accentColor)
    Q_PROPERTY(int count MEMBER count)
    Q_PROPERTY(QString countText MEMBER countText)
    Q_PROPERTY(QString sizeText MEMBER sizeText)
    Q_PROPERTY(bool isAllSelected MEMBER isAllSelected)

public:
    QString icon;        ///< Name of a symbol.
    QString accentColor; ///< Hexadecimal.
    int count = 0;
    QString countText; ///< "(1 item)", "(3 items)".
    QString sizeText;  ///< Of all its rows, selected or not.
    bool isAllSelected = false;

    bool operator==(const ResidualCategorySummary &) const = default;
};

/// The rows of a review: the categories in their order, within each the order in which the rows were found.
///
/// A new list of which every row was there before becomes removals and data changes, so that what stays on
/// the screen keeps its state. Thread: main thread.
class ResidualRowsModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        RowIdRole = Qt::UserRole + 1, ///< "rowId": text, for `UninstallerFlow::toggle`.
        NameRole,                     ///< "name"
        PathRole,                     ///< "path": the home folder is "~"; empty for a package.
        IconRole,                     ///< "icon": name of a symbol.
        SizeTextRole,                 ///< "sizeText"
        IsSelectedRole,               ///< "isSelected": the one role that changes.
        IsUserDeletableRole,          ///< "isUserDeletable"
        IsPackageRole,                ///< "isPackage"
        CategoryRole,                 ///< "category": its display name, for sections.
    };

    using QAbstractListModel::QAbstractListModel;

    int count() const { return int(m_rows.size()); }
    /// In any order; what is shown is in order.
    void setFiles(const QList<AppResidualFile> &files);
    /// Of the rows of the category of this display name.
    ResidualCategorySummary summary(const QString &category) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    void replace(const QList<AppResidualFile> &files);
    void removeMissing(const QList<AppResidualFile> &files);
    void updateSelection(const QList<AppResidualFile> &files);

    QList<AppResidualFile> m_rows; ///< Where they are in order, shared with whoever set them.
};

} // namespace quillbay

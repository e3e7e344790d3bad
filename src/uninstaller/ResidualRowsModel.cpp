#include "uninstaller/ResidualRowsModel.h"

#include "foundation/ByteCount.h"
#include "uninstaller/RowIcons.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

QList<AppResidualFile> inOrder(const QList<AppResidualFile> &files)
{
    const auto isBefore = [](const AppResidualFile &a, const AppResidualFile &b) {
        return a.category < b.category;
    };
    if (std::is_sorted(files.cbegin(), files.cend(), isBefore))
        return files;
    QList<AppResidualFile> ordered = files;
    std::stable_sort(ordered.begin(), ordered.end(), isBefore);
    return ordered;
}

} // namespace

void ResidualRowsModel::setFiles(const QList<AppResidualFile> &files)
{
    const QList<AppResidualFile> ordered = inOrder(files);
    const int before = count();
    auto next = ordered.cbegin();
    for (const AppResidualFile &row : std::as_const(m_rows)) {
        if (next != ordered.cend() && row.id == next->id)
            ++next;
    }
    if (next != ordered.cend()) {
        replace(ordered);
    } else {
        removeMissing(ordered);
        updateSelection(ordered);
    }
    if (count() != before)
        Q_EMIT countChanged();
}

void ResidualRowsModel::replace(const QList<AppResidualFile> &files)
{
    removeMissing({});
    beginInsertRows({}, 0, int(files.size()) - 1);
    m_rows = files;
    endInsertRows();
}

void ResidualRowsModel::removeMissing(const QList<AppResidualFile> &files)
{
    qsizetype kept = files.size();
    const auto isKept = [&](qsizetype row) { return kept > 0 && files.at(kept - 1).id == m_rows.at(row).id; };
    for (qsizetype row = m_rows.size() - 1; row >= 0; --row) {
        if (isKept(row)) {
            --kept;
            continue;
        }
        const qsizetype last = row;
        while (row > 0 && !isKept(row - 1))
            --row;
        beginRemoveRows({}, int(row), int(last));
        m_rows.remove(row, last - row + 1);
        endRemoveRows();
    }
}

void ResidualRowsModel::updateSelection(const QList<AppResidualFile> &files)
{
    const QList<AppResidualFile> before = std::exchange(m_rows, files);
    const auto differs = [&](qsizetype row) { return before.at(row).isSelected != files.at(row).isSelected; };
    for (qsizetype row = 0; row < files.size(); ++row) {
        if (!differs(row))
            continue;
        const qsizetype first = row;
        while (row < files.size() && differs(row))
            ++row;
        Q_EMIT dataChanged(index(int(first)), index(int(row) - 1), {IsSelectedRole});
    }
}

ResidualCategorySummary ResidualRowsModel::summary(const QString &category) const
{
    ResidualCategorySummary summary;
    qint64 size = 0;
    int selected = 0;
    const auto known = std::find_if(allResidualCategories.begin(), allResidualCategories.end(),
                                    [&](ResidualCategory one) { return rawValue(one) == category; });
    if (known != allResidualCategories.end()) {
        summary.icon = systemIconName(*known);
        summary.accentColor = quillbay::accentColor(*known);
        for (const AppResidualFile &row : m_rows) {
            if (row.category != *known)
                continue;
            ++summary.count;
            selected += row.isSelected ? 1 : 0;
            size = addByteCounts(size, row.sizeBytes);
        }
    }
    summary.countText = QStringLiteral("(%1 item%2)")
                            .arg(summary.count)
                            .arg(summary.count == 1 ? QString() : QStringLiteral("s"));
    summary.sizeText = byteCountText(size);
    summary.isAllSelected = summary.count > 0 && selected == summary.count;
    return summary;
}

int ResidualRowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ResidualRowsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const AppResidualFile &row = m_rows.at(index.row());
    switch (role) {
    case RowIdRole:
        return row.id.toString(QUuid::WithoutBraces);
    case Qt::DisplayRole:
    case NameRole:
        return row.displayName;
    case PathRole:
        return shownPath(QFile::decodeName(row.path), QDir::homePath());
    case IconRole:
        return rowIcon(row);
    case SizeTextRole:
        return byteCountText(row.sizeBytes);
    case IsSelectedRole:
        return row.isSelected;
    case IsUserDeletableRole:
        return row.isUserDeletable;
    case IsPackageRole:
        return row.isPackage();
    case CategoryRole:
        return rawValue(row.category);
    default:
        return {};
    }
}

QHash<int, QByteArray> ResidualRowsModel::roleNames() const
{
    return {
        {RowIdRole, "rowId"},
        {NameRole, "name"},
        {PathRole, "path"},
        {IconRole, "icon"},
        {SizeTextRole, "sizeText"},
        {IsSelectedRole, "isSelected"},
        {IsUserDeletableRole, "isUserDeletable"},
        {IsPackageRole, "isPackage"},
        {CategoryRole, "category"},
    };
}

} // namespace quillbay

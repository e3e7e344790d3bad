#include "uninstaller/ResidualRowsModel.h"

#include "foundation/ByteCount.h"
#include "uninstaller/RowIcons.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace quillbay {

namespace {

QList<AppResidualFile> inOrder(QList<AppResidualFile> files)
{
    std::stable_sort(files.begin(), files.end(), [](const AppResidualFile &a, const AppResidualFile &b) {
        return a.category < b.category;
    });
    return files;
}

} // namespace

void ResidualRowsModel::setFiles(const QList<AppResidualFile> &files)
{
    const QList<AppResidualFile> ordered = inOrder(files);
    const int before = count();
    const auto isSame = [](const Row &row, const AppResidualFile &file) { return row.file.id == file.id; };
    auto next = ordered.cbegin();
    for (const Row &row : std::as_const(m_rows)) {
        if (next != ordered.cend() && isSame(row, *next))
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
    for (const AppResidualFile &file : files)
        m_rows.append({file, rowIcon(file)});
    endInsertRows();
}

void ResidualRowsModel::removeMissing(const QList<AppResidualFile> &files)
{
    qsizetype kept = files.size();
    const auto isKept = [&](qsizetype row) {
        return kept > 0 && files.at(kept - 1).id == m_rows.at(row).file.id;
    };
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
    const auto differs = [&](qsizetype row) {
        return m_rows.at(row).file.isSelected != files.at(row).isSelected;
    };
    for (qsizetype row = 0; row < m_rows.size(); ++row) {
        if (!differs(row))
            continue;
        const qsizetype first = row;
        for (; row < m_rows.size() && differs(row); ++row)
            m_rows[row].file.isSelected = files.at(row).isSelected;
        Q_EMIT dataChanged(index(int(first)), index(int(row) - 1), {IsSelectedRole});
    }
}

ResidualCategorySummary ResidualRowsModel::summary(const QString &category) const
{
    ResidualCategorySummary summary;
    qint64 size = 0;
    int selected = 0;
    for (const Row &row : m_rows) {
        if (rawValue(row.file.category) != category)
            continue;
        ++summary.count;
        selected += row.file.isSelected ? 1 : 0;
        size = addByteCounts(size, row.file.sizeBytes);
    }
    const auto known = std::find_if(allResidualCategories.begin(), allResidualCategories.end(),
                                    [&](ResidualCategory one) { return rawValue(one) == category; });
    if (known != allResidualCategories.end()) {
        summary.icon = systemIconName(*known);
        summary.accentColor = quillbay::accentColor(*known);
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
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case RowIdRole:
        return row.file.id.toString(QUuid::WithoutBraces);
    case Qt::DisplayRole:
    case NameRole:
        return row.file.displayName;
    case PathRole:
        return shownPath(QFile::decodeName(row.file.path), QDir::homePath());
    case IconRole:
        return row.icon;
    case SizeTextRole:
        return byteCountText(row.file.sizeBytes);
    case IsSelectedRole:
        return row.file.isSelected;
    case IsUserDeletableRole:
        return row.file.isUserDeletable;
    case IsPackageRole:
        return row.file.isPackage();
    case CategoryRole:
        return rawValue(row.file.category);
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

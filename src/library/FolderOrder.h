#pragma once

#include "library/AppFolder.h"

#include <QList>
#include <QSet>
#include <QUuid>

#include <cstdint>

namespace quillbay {

/// Folder order: pinned ones first, then by `sortOrder`, then the newer first. Stable.
void sortFolders(QList<AppFolder> &folders);

/// The place behind all of them, of whatever parent; 0 for the first of all.
std::int64_t nextSortOrder(const QList<AppFolder> &folders);

/// Those without a parent that are not hidden, in the order of the list.
QList<AppFolder> rootFolders(const QList<AppFolder> &folders, const QSet<QUuid> &hidden);
/// Those with that parent that are not hidden, in the order of the list.
QList<AppFolder> childFolders(const QList<AppFolder> &folders, const QUuid &parentID,
                              const QSet<QUuid> &hidden);

/// Gives each folder of `inOrder` its place there as `sortOrder`; the others keep theirs.
void renumber(QList<AppFolder> &folders, const QList<AppFolder> &inOrder);

} // namespace quillbay

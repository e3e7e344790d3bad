#pragma once

#include "library/SidebarSelection.h"

#include <QList>
#include <QString>

#include <optional>

namespace quillbay {

/// A selection as one text, the form in which screens name it: "allApps", "newlyAdded", "recents",
/// "favorites", "hidden", "folder:" and the upper-case identifier, "category:" and the name; empty for none.
QString selectionKey(const std::optional<SidebarSelection> &selection);

/// The reverse; a folder is looked for among `folders`. Nothing for the empty text, for one that is no key
/// and for a folder that is not there.
std::optional<SidebarSelection> selectionOfKey(const QString &key, const QList<AppFolder> &folders);

} // namespace quillbay

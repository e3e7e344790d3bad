#pragma once

#include <QString>

namespace quillbay {

/// The category of whatever declares none.
QString otherCategory();

/// Display name of a declared category type such as "public.app-category.developer-tools": the last component
/// between dots with each word capitalised ("Developer-Tools"). A word ends at anything that is neither
/// letter nor digit; hyphens stay and no table maps to nicer names. A null string (nothing declared) gives
/// "Other"; an empty one gives an empty name.
QString categoryName(const QString &categoryType);

} // namespace quillbay

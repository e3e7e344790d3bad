#pragma once

#include <QString>

namespace quillbay {

/// The form of a text in which containment is a plain substring search: canonical composition, then case
/// folded by the rules of the current locale (Turkish and Azerbaijani tell dotted from dotless i). Accents
/// stay: a query with one finds only names with it.
///
/// Thread: any.
QString searchKey(const QString &text);

} // namespace quillbay

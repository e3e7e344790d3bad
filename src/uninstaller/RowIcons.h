#pragma once

#include <QString>

namespace quillbay {

struct AppResidualFile;

/// Name of the symbol for a row: a folder, a kind of file by the extension of its name whatever the case, or
/// a package.
QString rowIcon(const AppResidualFile &file);

/// A path for people: the home folder's path is replaced by "~" wherever it occurs.
QString shownPath(const QString &path, const QString &home);

} // namespace quillbay

#pragma once

#include <QSizeF>
#include <QString>

#include <optional>

namespace quillbay {

/// A measured size as it is listed and copied: "400 × 300 px".
QString measurementText(int width, int height);

/// The reverse, for texts that were stored; fractions are taken as well. Nothing where the text has another
/// form, or no size that a window could have.
std::optional<QSizeF> parseMeasurement(const QString &text);

} // namespace quillbay

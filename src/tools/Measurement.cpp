#include "tools/Measurement.h"

#include <QStringList>

namespace quillbay {

namespace {

const QString times = QStringLiteral(" \u00d7 ");
const QString unit = QStringLiteral(" px");

std::optional<double> parseLength(const QString &text)
{
    constexpr double longest = 32767; // of any window
    bool isNumber = false;
    const double length = text.trimmed().toDouble(&isNumber);
    if (!isNumber || !(length > 0 && length <= longest))
        return std::nullopt;
    return length;
}

} // namespace

QString measurementText(int width, int height)
{
    return QString::number(width) + times + QString::number(height) + unit;
}

std::optional<QSizeF> parseMeasurement(const QString &text)
{
    const QStringList parts = text.split(times);
    if (parts.size() != 2)
        return std::nullopt;
    const auto width = parseLength(parts[0]);
    const auto height = parseLength(QString(parts[1]).remove(unit));
    if (!width || !height)
        return std::nullopt;
    return QSizeF(*width, *height);
}

} // namespace quillbay

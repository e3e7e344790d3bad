#include "foundation/ByteCount.h"

#include <QLocale>

#include <array>
#include <cmath>
#include <limits>

namespace quillbay {

namespace {

struct Unit
{
    const char *name;
    int decimals;
};

constexpr std::array<Unit, 6> units{{{"KB", 0}, {"MB", 1}, {"GB", 2}, {"TB", 2}, {"PB", 2}, {"EB", 2}}};

/// `value` to so many decimals, without zeros at the end.
QString number(double value, int decimals)
{
    const QLocale locale;
    for (int precision = decimals; precision > 0; --precision) {
        const double scale = std::pow(10, precision);
        if (std::fmod(std::round(value * scale), 10) != 0)
            return locale.toString(value, 'f', precision);
    }
    return locale.toString(value, 'f', 0);
}

} // namespace

QString byteCountText(qint64 bytes)
{
    if (bytes == 0)
        return QStringLiteral("Zero KB");
    if (bytes < 1000)
        return bytes == 1 ? QStringLiteral("1 byte")
                          : QStringLiteral("%1 bytes").arg(QLocale().toString(bytes));
    double value = double(bytes) / 1000;
    size_t unit = 0;
    const auto rounded = [&] {
        const double scale = std::pow(10, units[unit].decimals);
        return std::round(value * scale) / scale;
    };
    while (unit + 1 < units.size() && rounded() >= 1000) {
        value /= 1000;
        ++unit;
    }
    return number(rounded(), units[unit].decimals) + u' ' + QLatin1String(units[unit].name);
}

qint64 addByteCounts(qint64 a, qint64 b)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    return a > most - b ? most : a + b;
}

} // namespace quillbay

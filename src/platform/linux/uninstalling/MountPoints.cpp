#include "platform/linux/uninstalling/MountPoints.h"

#include <QFile>

namespace quillbay::platform {

namespace {

constexpr qsizetype MountPointField = 4;

bool isOctal(char digit)
{
    return digit >= '0' && digit <= '7';
}

QByteArray unescaped(const QByteArray &field)
{
    QByteArray result;
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && isOctal(field[i + 1]) && isOctal(field[i + 2]) &&
            isOctal(field[i + 3])) {
            result += char((field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 + (field[i + 3] - '0'));
            i += 3;
        } else {
            result += field[i];
        }
    }
    return result;
}

} // namespace

QList<QByteArray> mountPointsIn(const QByteArray &mountinfo)
{
    QList<QByteArray> result;
    for (const QByteArray &line : mountinfo.split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() > MountPointField && fields[MountPointField].startsWith('/'))
            result += unescaped(fields[MountPointField]);
    }
    return result;
}

std::optional<QList<QByteArray>> currentMountPoints()
{
    QFile file(QStringLiteral("/proc/self/mountinfo"));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray text = file.readAll();
    // There is always one: that of the root folder.
    if (file.error() != QFileDevice::NoError || text.isEmpty())
        return std::nullopt;
    return mountPointsIn(text);
}

} // namespace quillbay::platform

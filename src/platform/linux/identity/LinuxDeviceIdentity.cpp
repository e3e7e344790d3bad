#include "platform/linux/identity/LinuxDeviceIdentity.h"

#include "foundation/Uuid.h"

#include <QCryptographicHash>
#include <QFile>
#include <QGuiApplication>
#include <QMessageAuthenticationCode>
#include <QScreen>
#include <QSysInfo>

#include <algorithm>

namespace quillbay::platform {

namespace {

/// Quillbay's own; another one would make every installation a new one.
constexpr char applicationConstant[] = "ac2a71179b60b4d82e0bd7562d400166";
constexpr qsizetype machineIdLength = 32;
constexpr qsizetype longestLine = 256;

bool isHexadecimal(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

} // namespace

std::optional<QString> deviceIdFromMachineId(const QByteArray &machineId)
{
    const QByteArray digits = machineId.trimmed();
    if (digits.size() != machineIdLength || !std::all_of(digits.begin(), digits.end(), isHexadecimal) ||
        digits.count('0') == machineIdLength)
        return std::nullopt;
    QByteArray id = QMessageAuthenticationCode::hash(QByteArray::fromHex(applicationConstant),
                                                     QByteArray::fromHex(digits), QCryptographicHash::Sha256)
                        .left(16);
    id[6] = char((id[6] & 0x0f) | 0x40);
    id[8] = char((id[8] & 0x3f) | 0x80);
    return uuidString(QUuid::fromRfc4122(id));
}

LinuxDeviceIdentity::LinuxDeviceIdentity(const QString &root)
    : m_root(root)
{
}

std::optional<QString> LinuxDeviceIdentity::applicationDeviceId() const
{
    return deviceIdFromMachineId(firstLine("/etc/machine-id").toLatin1());
}

QString LinuxDeviceIdentity::osVersion() const
{
    return QSysInfo::prettyProductName();
}

QString LinuxDeviceIdentity::model() const
{
    const QString vendor = firstLine("/sys/class/dmi/id/sys_vendor");
    const QString product = firstLine("/sys/class/dmi/id/product_name");
    if (product.isEmpty())
        return firstLine("/proc/device-tree/model");
    if (vendor.isEmpty() || product.startsWith(vendor))
        return product;
    return vendor + QLatin1Char(' ') + product;
}

QSize LinuxDeviceIdentity::screenSize() const
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize() : QSize();
}

QString LinuxDeviceIdentity::firstLine(const char *path) const
{
    QFile file(m_root + QLatin1String(path));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray line = file.readLine(longestLine);
    // A device tree's texts end with a NUL.
    line.truncate(qsizetype(qstrnlen(line.constData(), size_t(line.size()))));
    return QString::fromUtf8(line).trimmed();
}

} // namespace quillbay::platform

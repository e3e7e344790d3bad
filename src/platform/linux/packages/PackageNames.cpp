#include "platform/linux/packages/PackageNames.h"

#include <QRegularExpression>
#include <QSysInfo>

#include <array>
#include <cstdlib>
#include <memory>
#include <utility>

namespace quillbay::platform {

namespace {

constexpr qsizetype longestName = 255;

bool matches(const QRegularExpression &expression, const QString &text)
{
    return text.size() <= longestName && expression.match(text).hasMatch();
}

bool isNativeArchitecture(const QString &architecture)
{
    static const std::array<std::pair<QLatin1String, QLatin1String>, 7> others = {{
        {QLatin1String("x86_64"), QLatin1String("amd64")},
        {QLatin1String("arm64"), QLatin1String("aarch64")},
        {QLatin1String("arm"), QLatin1String("armhf")},
        {QLatin1String("arm"), QLatin1String("armv7hl")},
        {QLatin1String("i386"), QLatin1String("i686")},
        {QLatin1String("power64"), QLatin1String("ppc64le")},
        {QLatin1String("power64"), QLatin1String("ppc64el")},
    }};
    const QString own = QSysInfo::buildCpuArchitecture();
    if (architecture == QLatin1String("all") || architecture == QLatin1String("noarch") ||
        architecture == own)
        return true;
    for (const auto &[ours, theirs] : others) {
        if (own == ours && architecture == theirs)
            return true;
    }
    return false;
}

QByteArray realPath(const QByteArray &path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.constData(), nullptr), &std::free);
    return QByteArray(real.get());
}

void add(QByteArrayList &list, const QByteArray &path)
{
    for (const QByteArray &form : mergedForms(path)) {
        if (!list.contains(form))
            list.append(form);
    }
}

} // namespace

bool isDebianName(const QString &name)
{
    static const QRegularExpression expression(
        QStringLiteral("\\A[a-z0-9][a-z0-9+.-]*(:[a-z0-9][a-z0-9-]*)?\\z"));
    return matches(expression, name);
}

bool isRpmName(const QString &name)
{
    static const QRegularExpression expression(QStringLiteral("\\A[A-Za-z0-9_][A-Za-z0-9_+.~^:-]*\\z"));
    return matches(expression, name);
}

bool isFlatpakId(const QString &id)
{
    static const QRegularExpression expression(
        QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_-]*(\\.[A-Za-z_][A-Za-z0-9_-]*)+\\z"));
    return matches(expression, id);
}

bool isFlatpakReference(const QString &reference, const QString &id)
{
    static const QRegularExpression expression(
        QStringLiteral("\\A/[A-Za-z0-9_]+/[A-Za-z0-9_][A-Za-z0-9_.-]*\\z"));
    const QString start = QStringLiteral("app/") + id;
    return isFlatpakId(id) && reference.startsWith(start) && matches(expression, reference.mid(start.size()));
}

bool isSnapName(const QString &name)
{
    static const QRegularExpression expression(QStringLiteral("\\A[a-z0-9][a-z0-9-]*(_[a-z0-9]{1,10})?\\z"));
    return matches(expression, name);
}

bool hasValidNames(const Package &package)
{
    switch (package.kind) {
    case PackageKind::Debian:
        return isDebianName(package.name) && isDebianName(package.id);
    case PackageKind::Rpm:
        return isRpmName(package.name) && isRpmName(package.id);
    case PackageKind::Flatpak:
        return isFlatpakReference(package.id, package.name);
    case PackageKind::Snap:
        return isSnapName(package.name) && package.id == package.name;
    }
    return false;
}

QString listedName(PackageKind kind, const QString &name, const QString &architecture)
{
    if (architecture.isEmpty() || isNativeArchitecture(architecture))
        return name;
    return name + (kind == PackageKind::Rpm ? u'.' : u':') + architecture;
}

QString listedName(const Package &package)
{
    const QString architecture =
        package.kind == PackageKind::Rpm ? package.id.section(u'.', -1) : package.id.section(u':', 1);
    return listedName(package.kind, package.name, architecture);
}

QString packageText(PackageKind kind, const QString &name)
{
    switch (kind) {
    case PackageKind::Debian:
        return QStringLiteral("%1, Debian package").arg(name);
    case PackageKind::Rpm:
        return QStringLiteral("%1, RPM package").arg(name);
    case PackageKind::Flatpak:
        return QStringLiteral("%1, Flatpak application").arg(name);
    case PackageKind::Snap:
        break;
    }
    return QStringLiteral("%1, Snap package").arg(name);
}

QByteArrayList mergedForms(const QByteArray &path)
{
    for (const char *folder : {"/bin/", "/sbin/", "/lib/", "/lib32/", "/lib64/", "/libx32/"}) {
        if (path.startsWith(folder))
            return {path, "/usr" + path};
        if (path.startsWith(QByteArray("/usr") + folder))
            return {path, path.mid(4)};
    }
    return {path};
}

FileSpellings spellingsOf(const QByteArray &path)
{
    FileSpellings spellings;
    if (!path.startsWith('/') || path.contains('\0'))
        return spellings;
    QByteArray file = path;
    while (file.size() > 1 && file.endsWith('/'))
        file.chop(1);
    add(spellings.own, file);
    const qsizetype slash = file.lastIndexOf('/');
    const QByteArray name = file.mid(slash + 1);
    const QByteArray folder = realPath(slash > 0 ? file.left(slash) : QByteArray("/"));
    if (!folder.isEmpty() && name != "." && name != ".." && !name.isEmpty())
        add(spellings.own, folder == "/" ? folder + name : folder + '/' + name);
    const QByteArray real = realPath(file);
    if (!real.isEmpty() && !spellings.own.contains(real))
        add(spellings.target, real);
    return spellings;
}

} // namespace quillbay::platform

#include "platform/linux/icons/DesktopIconSource.h"

#include "platform/ApplicationSource.h"
#include "platform/linux/icons/GenericIcon.h"
#include "platform/linux/icons/IconPicture.h"

#include <QMimeDatabase>

#include <algorithm>
#include <utility>

namespace quillbay::platform {

namespace {

int sane(int edge)
{
    return std::clamp(edge, 1, 4096);
}

bool isAppImage(const QString &path)
{
    return path.endsWith(QLatin1String(".AppImage"), Qt::CaseInsensitive);
}

} // namespace

DesktopIconSource::DesktopIconSource(const ApplicationSource &applications, IconThemeIndex::Folders folders)
    : m_applications(applications)
    , m_index(std::move(folders))
{
}

void DesktopIconSource::setTheme(const QString &name)
{
    m_index.setTheme(name);
}

void DesktopIconSource::refresh() const
{
    m_index.refresh();
}

QImage DesktopIconSource::icon(const QString &path, int edge) const
{
    const int side = sane(edge);
    QImage image;
    if (const std::optional<ApplicationDetails> details = m_applications.read(path))
        image = namedIcon(details->icon, side);
    if (image.isNull() && isAppImage(path))
        image = decodeIconPicture(m_appImages.read(path), side);
    return image;
}

QImage DesktopIconSource::documentIcon(const QString &path, int edge) const
{
    const QMimeType kind = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    for (const QString &name : {kind.iconName(), kind.genericIconName(), QStringLiteral("text-x-generic")}) {
        if (const QImage image = namedIcon(name, sane(edge)); !image.isNull())
            return image;
    }
    return {};
}

QImage DesktopIconSource::namedIcon(const QString &name, int edge) const
{
    if (name.startsWith(QLatin1Char('/')))
        return readIconPicture(name, edge);
    const QStringList files = m_index.find(name, edge);
    for (const QString &file : files) {
        if (const QImage image = readIconPicture(file, edge); !image.isNull())
            return image;
    }
    return {};
}

QImage DesktopIconSource::genericIcon(int edge) const
{
    return drawGenericIcon(sane(edge));
}

} // namespace quillbay::platform

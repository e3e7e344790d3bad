#include "library/AppIconLoader.h"

#include "library/AppIconReader.h"

#include <algorithm>

namespace quillbay {

AppIconLoader::AppIconLoader(QObject *parent)
    : ObservableObject(parent)
{
    AppIconReader::instance().add(this);
}

AppIconLoader::~AppIconLoader()
{
    AppIconReader::instance().remove(this);
}

void AppIconLoader::setPath(const QString &path)
{
    if (path != m_path)
        loadIcon(path);
}

void AppIconLoader::setPixelSize(int pixelSize)
{
    pixelSize = std::max(pixelSize, 0);
    if (pixelSize == m_pixelSize)
        return;
    publish(m_pixelSize, pixelSize, &AppIconLoader::pixelSizeChanged);
    request(true);
}

void AppIconLoader::loadIcon(const QString &path)
{
    const bool samePath = path == m_path;
    if (!samePath)
        publish(m_path, path, &AppIconLoader::pathChanged);
    request(samePath);
}

void AppIconLoader::request(bool keepPicture)
{
    AppIconReader &reader = AppIconReader::instance();
    reader.forget(this);
    if (m_path.isEmpty() || m_pixelSize == 0) {
        setIcon({});
        return;
    }
    if (const QImage cached = reader.cached({m_path, m_pixelSize}); !cached.isNull()) {
        setIcon(cached);
        return;
    }
    reader.read({m_path, m_pixelSize}, this);
    if (!keepPicture || m_icon.isNull())
        setIcon(getGenericAppIcon(m_pixelSize));
}

void AppIconLoader::setIcon(const QImage &icon)
{
    if (icon.cacheKey() != m_icon.cacheKey())
        publish(m_icon, icon, &AppIconLoader::iconChanged);
}

void AppIconLoader::prefetchIcons(const QStringList &paths, int pixelSize)
{
    AppIconReader::instance().prefetch(paths, pixelSize);
}

void AppIconLoader::readAhead(const QStringList &paths, int pixelSize)
{
    AppIconReader::instance().readAhead(paths, pixelSize);
}

QImage AppIconLoader::getGenericAppIcon(int pixelSize)
{
    return AppIconReader::instance().genericIcon(pixelSize);
}

void AppIconLoader::setSource(const platform::IconSource *source)
{
    AppIconReader::instance().setSource(source);
}

void AppIconLoader::setCacheLimit(qint64 bytes)
{
    AppIconReader::instance().setCacheLimit(bytes);
}

void AppIconLoader::setSecondLookDelay(std::chrono::milliseconds delay)
{
    AppIconReader::instance().setSecondLookDelay(delay);
}

void AppIconLoader::invalidate()
{
    AppIconReader::instance().invalidate();
}

void AppIconLoader::shutDown()
{
    AppIconReader::instance().shutDown();
}

} // namespace quillbay

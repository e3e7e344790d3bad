#pragma once

#include "foundation/ObservableObject.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <chrono>

namespace quillbay {

namespace platform {
class IconSource;
}

/// The icon of one application, for one tile. All loaders share one process-wide cache, by path and size.
///
/// A cached icon is there as soon as `path` and `pixelSize` are: a tile's first frame shows it. Any other is
/// read in the background, and `icon` is the generic one until it comes; a size that changes keeps the old
/// picture meanwhile. What is read for a loader overtakes all prefetching.
///
/// Thread: main thread, the static functions too. None of them waits, `shutDown` excepted.
class AppIconLoader : public ObservableObject
{
    Q_OBJECT
    /// The application's path, as `AppItem::id` gives it; empty for none.
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    /// Edge of the icon in device pixels; 0 for no icon.
    Q_PROPERTY(int pixelSize READ pixelSize WRITE setPixelSize NOTIFY pixelSizeChanged)
    /// Never null once `path` and `pixelSize` are set.
    Q_PROPERTY(QImage icon READ icon NOTIFY iconChanged)

public:
    explicit AppIconLoader(QObject *parent = nullptr);
    ~AppIconLoader() override;

    QString path() const { return m_path; }
    void setPath(const QString &path);
    int pixelSize() const { return m_pixelSize; }
    void setPixelSize(int pixelSize);
    QImage icon() const { return m_icon; }

    /// Sets `path` and gets its icon, anew also where the path is the present one.
    void loadIcon(const QString &path);

    /// Reads what the cache does not have of `paths`, at the lowest priority, and stops when the cache is
    /// full. Takes the place of an earlier request for that size.
    ///
    /// To be called after each scan: icons that were missing, of any size, are asked for again now and, since
    /// an installer may write them after the application, once more after the second look's delay. Loaders
    /// keep the generic icon meanwhile.
    static void prefetchIcons(const QStringList &paths, int pixelSize);

    /// Reads what the cache does not have of `paths`, in that order, as if tiles waited for it: for those
    /// that are about to be made.
    static void readAhead(const QStringList &paths, int pixelSize);

    /// The icon of "some application"; one shared image for each size.
    static QImage getGenericAppIcon(int pixelSize);

    /// Where icons come from. Not owned; must live until `shutDown` returns or, where another takes its
    /// place, until the reads in progress have ended. Icons read from an earlier source are dropped.
    static void setSource(const platform::IconSource *source);

    /// Bounds the cache, 32 MiB unless set; icons that were not shown for longest give way.
    static void setCacheLimit(qint64 bytes);

    /// Three seconds unless set.
    static void setSecondLookDelay(std::chrono::milliseconds delay);

    /// Drops every icon, as another icon theme demands. Loaders read anew and keep their picture until then;
    /// an unfinished prefetch starts again.
    static void invalidate();

    /// Drops what waits to be read and waits for the reads in progress. Afterwards there is no source.
    static void shutDown();

Q_SIGNALS:
    void pathChanged();
    void pixelSizeChanged();
    void iconChanged();

private:
    friend class AppIconReader;

    void request(bool keepPicture);
    void setIcon(const QImage &icon);

    QString m_path;
    int m_pixelSize = 0;
    QImage m_icon;
};

} // namespace quillbay

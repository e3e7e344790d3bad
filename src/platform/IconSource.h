#pragma once

#include <QImage>
#include <QString>

namespace quillbay::platform {

/// Icons of applications, decoded.
///
/// Thread: any thread, several at a time. May take tens of milliseconds: never call it from the main thread.
class IconSource
{
public:
    virtual ~IconSource() = default;

    /// The icon of the application at `path`, `edge` by `edge` device pixels, premultiplied ARGB, device
    /// pixel ratio 1; smaller pictures are centred or scaled up as the platform does. Null where the
    /// application has none that can be read, or is not there: it is to be shown as the generic one.
    virtual QImage icon(const QString &path, int edge) const = 0;

    /// The picture of a document's kind, by its name. Null where there is none.
    virtual QImage documentIcon(const QString &path, int edge) const = 0;

    /// The picture of "some application": shown until the real one is there. Cheap, drawn by the program
    /// itself: may be called on the main thread.
    virtual QImage genericIcon(int edge) const = 0;

    /// Icons may have come or gone: the next one asked for is looked up in what the disk holds then. Returns
    /// at once.
    virtual void refresh() const {}
};

} // namespace quillbay::platform

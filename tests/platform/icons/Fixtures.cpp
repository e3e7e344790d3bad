#include "platform/icons/Fixtures.h"

#include <QBuffer>

namespace quillbay::testing {

QByteArray png(QSize size, const QColor &color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        qFatal("cannot write a PNG");
    return buffer.data();
}

QByteArray svg(const QColor &color)
{
    return svgDocument("<rect width=\"100\" height=\"100\" fill=\"" + color.name().toLatin1() + "\"/>");
}

QByteArray svgDocument(const QByteArray &body)
{
    return "<?xml version=\"1.0\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
           "xmlns:xlink=\"http://www.w3.org/1999/xlink\" viewBox=\"0 0 100 100\">" +
           body + "</svg>";
}

QByteArray themeIndex(const std::vector<ThemeFolder> &folders, const QByteArray &inherits)
{
    QByteArrayList paths;
    QByteArray groups;
    for (const ThemeFolder &folder : folders) {
        paths << folder.path;
        groups += "\n[" + folder.path + "]\n" + folder.keys + '\n';
    }
    return "[Icon Theme]\nName=Test\nName[de]=Probe\nInherits=" + inherits +
           "\nDirectories=" + paths.join(',') + '\n' + groups;
}

QColor middle(const QImage &image)
{
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

} // namespace quillbay::testing

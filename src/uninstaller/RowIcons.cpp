#include "uninstaller/RowIcons.h"

#include "uninstaller/AppResidualFile.h"

#include <sys/stat.h>

namespace quillbay {

namespace {

QByteArray extensionOf(const QByteArray &path)
{
    const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
    const qsizetype dot = name.lastIndexOf('.');
    return dot > 0 ? name.mid(dot + 1).toLower() : QByteArray();
}

} // namespace

QString rowIcon(const AppResidualFile &file)
{
    if (file.isPackage())
        return QStringLiteral("shippingbox.fill");
    if (file.identity && S_ISDIR(file.identity->kind))
        return QStringLiteral("folder.fill");
    const QByteArray extension = extensionOf(file.path);
    if (extension == "plist")
        return QStringLiteral("doc.text.fill");
    if (extension == "log")
        return QStringLiteral("doc.plaintext.fill");
    if (extension == "crash")
        return QStringLiteral("exclamationmark.triangle.fill");
    if (extension == "pem" || extension == "cer")
        return QStringLiteral("lock.doc.fill");
    return QStringLiteral("doc.fill");
}

QString shownPath(const QString &path, const QString &home)
{
    return home.size() > 1 ? QString(path).replace(home, QStringLiteral("~")) : path;
}

} // namespace quillbay

#include "tools/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>

namespace quillbay {

void copyToClipboard(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

void copyToClipboard(const QImage &picture)
{
    QGuiApplication::clipboard()->setImage(picture);
}

} // namespace quillbay

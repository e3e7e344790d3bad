#include "tools/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace quillbay {

void copyToClipboard(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace quillbay

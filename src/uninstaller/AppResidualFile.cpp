#include "uninstaller/AppResidualFile.h"

namespace quillbay {

QUrl AppResidualFile::url() const
{
    return path.isEmpty() ? QUrl() : QUrl::fromEncoded("file://" + path.toPercentEncoding("/"));
}

} // namespace quillbay

#include "uninstaller/CommandLines.h"

namespace quillbay {

namespace {

QByteArray quoted(QByteArray path)
{
    return '\'' + path.replace("'", "'\\''") + '\'';
}

} // namespace

QByteArray removeCommandLine(const QByteArray &path)
{
    return "rm -rf " + quoted(path);
}

QByteArray moveCommandLine(const QByteArray &from, const QByteArray &to)
{
    return "mv " + quoted(from) + ' ' + quoted(to);
}

} // namespace quillbay

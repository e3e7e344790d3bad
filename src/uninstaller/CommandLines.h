#pragma once

#include <QByteArray>

namespace quillbay {

/// The two command lines that elevation is asked for. A path stands in apostrophes, and each apostrophe in it
/// is written `'\''`; no other byte is touched.
QByteArray removeCommandLine(const QByteArray &path);                     ///< `rm -rf 'PATH'`
QByteArray moveCommandLine(const QByteArray &from, const QByteArray &to); ///< `mv 'FROM' 'TO'`

} // namespace quillbay

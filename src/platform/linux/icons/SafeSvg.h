#pragma once

#include <QByteArray>

namespace quillbay::platform {

/// The drawing `svg`, rewritten so that rendering it ends soon and opens no file: Qt's renderer loads images
/// and style sheets by name (and would wait on a FIFO), follows nested reuse without end, and recurses as
/// deep as the text does. Left out are the document type (its entities resolved), processing instructions,
/// animations, scripts, and images other than embedded PNG and JPEG ones.
///
/// Empty for what is no well-formed SVG, nests deeper than 128 elements, or draws more than 100,000 of them.
QByteArray safeSvg(const QByteArray &svg);

} // namespace quillbay::platform

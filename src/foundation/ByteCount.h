#pragma once

#include <QString>

namespace quillbay {

/// A file size for people, in decimal units and the locale's digits: "Zero KB", "1 byte", "512 bytes",
/// "34 KB", "1.2 MB", "3.07 GB". Bytes and kilobytes come without decimals, megabytes with at most one,
/// larger units with at most two; a value that rounds up to a thousand takes the next unit.
QString byteCountText(qint64 bytes);

/// The sum of two sizes, neither negative; the largest size where it would be more. Sparse files of eight
/// exabytes exist.
qint64 addByteCounts(qint64 a, qint64 b);

} // namespace quillbay

#pragma once

#include <QByteArray>

namespace quillbay::platform {

/// Whether `data` begins as an Apple icon image does.
bool isIcns(const QByteArray &data);

/// The PNG inside the Apple icon image `data` that serves a square of `edge` pixels best: that size, else the
/// next larger, else the largest. Reads the types that carry PNG, "icp4" to "icp6" and "ic07" to "ic14";
/// empty where there is none, since the older packed bitmaps and JPEG 2000 are not read.
///
/// The format: "icns", length of the whole; then entries of four-letter type, length with these eight bytes,
/// content; numbers are 32 bits, big-endian.
QByteArray bestIcnsPicture(const QByteArray &data, int edge);

} // namespace quillbay::platform

#pragma once

#include <QImage>

namespace quillbay::platform {

/// The picture of "some application": a rounded plate with a window on it, `edge` by `edge` pixels,
/// premultiplied ARGB. Reads well on light and dark grounds. Thread: any.
QImage drawGenericIcon(int edge);

} // namespace quillbay::platform

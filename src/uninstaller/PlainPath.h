#pragma once

class QByteArray;

namespace quillbay {

/// Whether a path is absolute and names each step once: no empty one, no `.` and no `..`; nor is it the root
/// folder, or does it have a byte that ends it for the system. Thread-safe.
bool isPlainPath(const QByteArray &path);

} // namespace quillbay

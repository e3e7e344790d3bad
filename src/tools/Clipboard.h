#pragma once

#include <QString>

class QImage;

namespace quillbay {

/// Puts plain text, and nothing else, on the desktop's clipboard, where it stays while the program runs.
/// Under Wayland the desktop takes it from the active window alone. Thread: main thread.
void copyToClipboard(const QString &text);
/// The same for a picture.
void copyToClipboard(const QImage &picture);

} // namespace quillbay

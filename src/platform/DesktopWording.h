#pragma once

#include <QString>

namespace quillbay::platform {

/// `text`, which calls what a desktop offers by the names that macOS has for it, in the words of the running
/// desktop. Each desktop has a table of the names that it words otherwise. Thread: any.
QString desktopWording(QString text);

} // namespace quillbay::platform

#pragma once

#include "support/XServer.h"

#include <QSize>

#include <optional>

namespace quillbay {

/// Where frames are timed: an X server as large as the window, ended with the object, unless there is a
/// display; all of a frame done on the main thread, at once, and no desktop that would be asked meanwhile. To
/// be made before the application; ends the program where the server does not start.
class OwnDisplay
{
public:
    explicit OwnDisplay(QSize size); ///< Pixels.

private:
    std::optional<testing::XServer> m_server;
};

} // namespace quillbay

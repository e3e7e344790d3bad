#pragma once

#include <QProcess>

namespace quillbay {

/// An X server as large as the window, ended with the object, and the windows of this process on it. None
/// where there is a display. To be made before the application; ends the program where it does not start.
class OwnDisplay
{
public:
    OwnDisplay();
    ~OwnDisplay();
    OwnDisplay(const OwnDisplay &) = delete;
    OwnDisplay &operator=(const OwnDisplay &) = delete;

private:
    QProcess m_server;
};

} // namespace quillbay

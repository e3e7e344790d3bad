#include "bench/OwnDisplay.h"

namespace quillbay {

OwnDisplay::OwnDisplay(QSize size)
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QSG_RENDER_LOOP", "basic");
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        qputenv("DISPLAY", m_server.emplace(size).display());
}

} // namespace quillbay

#pragma once

#include <QProcess>

namespace quillbay::testing {

/// An X server of a test's own, without a screen that anyone sees, and a window manager on it. Ends with the
/// object.
class XServer
{
public:
    XServer();
    ~XServer();
    XServer(const XServer &) = delete;
    XServer &operator=(const XServer &) = delete;

    /// As DISPLAY wants it.
    QByteArray display() const { return m_display; }
    void startWindowManager();

private:
    QProcess m_server;
    QProcess m_windowManager;
    QByteArray m_display;
};

} // namespace quillbay::testing

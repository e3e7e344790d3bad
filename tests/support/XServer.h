#pragma once

#include <QProcess>
#include <QSize>

namespace quillbay::testing {

/// An X server of a test's own, without a screen that anyone sees, of a size in pixels. Ends with the object.
class XServer
{
public:
    explicit XServer(QSize size = {1000, 800});
    ~XServer();
    XServer(const XServer &) = delete;
    XServer &operator=(const XServer &) = delete;

    /// As DISPLAY wants it.
    QByteArray display() const { return m_display; }
    /// Returns once it manages windows: one that appears earlier may be overlooked by it for good.
    void startWindowManager();

    /// For a program that is to be a client: this display, no session bus, the machine's own data.
    QProcessEnvironment environment() const;

private:
    QProcess m_server;
    QProcess m_windowManager;
    QByteArray m_display;
};

} // namespace quillbay::testing

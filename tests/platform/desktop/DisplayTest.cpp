#include "platform/Platform.h"
#include "support/TestHome.h"

#include <QFile>
#include <QHash>

#include <cstring>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using quillbay::platform::hasDisplay;
using quillbay::testing::TestHome;

namespace {

/// Something that takes connections at `path`.
class Listener
{
public:
    explicit Listener(const QString &path)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof(address.sun_path) - 1);
        m_listens = ::bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0 &&
                    ::listen(m_socket, 1) == 0;
    }
    ~Listener() { ::close(m_socket); }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    bool listens() const { return m_listens; }

private:
    int m_socket;
    bool m_listens = false;
};

/// Runs without any display variable, and puts them back.
class DisplayTest : public ::testing::Test
{
protected:
    DisplayTest()
    {
        for (const char *name : names) {
            m_old.insert(name, qgetenv(name));
            qunsetenv(name);
        }
    }
    ~DisplayTest() override
    {
        for (const char *name : names)
            m_old[name].isNull() ? qunsetenv(name) : qputenv(name, m_old[name]);
    }

    static constexpr const char *names[] = {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET",
                                            "QT_QPA_PLATFORM"};
    TestHome m_home;
    QHash<QByteArray, QByteArray> m_old;
};

} // namespace

TEST_F(DisplayTest, SaysWhyThereIsNone)
{
    const char *unset = nullptr;
    EXPECT_FALSE(hasDisplay(&unset));
    ASSERT_NE(unset, nullptr);
    qputenv("DISPLAY", "unix:/nonexistent/server");
    qputenv("WAYLAND_DISPLAY", "wayland-77");
    const char *dead = nullptr;
    EXPECT_FALSE(hasDisplay(&dead));
    ASSERT_NE(dead, nullptr);
    EXPECT_STRNE(dead, unset);
    EXPECT_FALSE(hasDisplay(nullptr));
}

TEST_F(DisplayTest, KnowsALiveOne)
{
    qputenv("DISPLAY", m_old["DISPLAY"]);
    EXPECT_TRUE(hasDisplay(nullptr));
    qputenv("QT_QPA_PLATFORM", "wayland");
    EXPECT_FALSE(hasDisplay(nullptr));

    qunsetenv("DISPLAY");
    const Listener compositor(m_home.path(QStringLiteral("run/wayland-5")));
    ASSERT_TRUE(compositor.listens());
    qputenv("WAYLAND_DISPLAY", "wayland-5");
    EXPECT_TRUE(hasDisplay(nullptr));
    qputenv("WAYLAND_DISPLAY", QFile::encodeName(m_home.path(QStringLiteral("run/wayland-5"))));
    EXPECT_TRUE(hasDisplay(nullptr));
    qputenv("QT_QPA_PLATFORM", "xcb");
    EXPECT_FALSE(hasDisplay(nullptr));
}

TEST_F(DisplayTest, APlatformWithoutAServerNeedsNone)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    EXPECT_TRUE(hasDisplay(nullptr));
}

#include "platform/linux/desktop/LinuxWindowEffects.h"
#include "platform/linux/desktop/WaylandWindowEffects.h"
#include "platform/linux/desktop/X11WindowEffects.h"
#include "support/TestHome.h"
#include "support/XServer.h"

#include <QGuiApplication>
#include <QRasterWindow>
#include <QTest>

#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <xcb/xcb.h>

using quillbay::platform::blurRectangles;
using quillbay::platform::chooseWindowEffects;
using quillbay::platform::WaylandWindowEffects;
using quillbay::platform::X11WindowEffects;
using ::testing::ElementsAre;

namespace {

constexpr int patience = 15000; // milliseconds

/// Another program on the same server.
class Peer
{
public:
    Peer()
        : m_connection(xcb_connect(nullptr, nullptr))
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
    {
        const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        const auto cookie =
            xcb_change_window_attributes_checked(m_connection, m_root, XCB_CW_EVENT_MASK, &mask);
        if (own(xcb_request_check(m_connection, cookie)))
            qFatal("the root cannot be listened to");
    }
    ~Peer() { xcb_disconnect(m_connection); }
    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;

    xcb_window_t root() const { return m_root; }

    xcb_atom_t atom(const char *name)
    {
        const auto length = static_cast<uint16_t>(qstrlen(name));
        const auto reply =
            own(xcb_intern_atom_reply(m_connection, xcb_intern_atom(m_connection, 0, length, name), nullptr));
        return reply->atom;
    }
    std::vector<quint32> property(xcb_window_t window, const char *name)
    {
        const auto cookie =
            xcb_get_property(m_connection, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1000);
        const auto reply = own(xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply || reply->format != 32)
            return {};
        const auto *first = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
        return {first, first + reply->value_len};
    }
    void setRootProperty(const char *name, bool present)
    {
        const quint32 value = 0;
        if (present)
            xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_root, atom(name), atom(name), 32, 1,
                                &value);
        else
            xcb_delete_property(m_connection, m_root, atom(name));
        xcb_flush(m_connection);
    }
    /// Becomes the compositor, or is none any more.
    void setCompositing(bool on)
    {
        const xcb_window_t owner = on ? openWindow() : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
        xcb_set_selection_owner(m_connection, owner, atom("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
        xcb_flush(m_connection);
    }
    /// Maps a window over everything, which takes the keyboard as the one the user works in.
    xcb_window_t openWindow()
    {
        const xcb_window_t window = xcb_generate_id(m_connection);
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_root, 0, 0, 900, 700, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(m_connection, window);
        xcb_flush(m_connection);
        return window;
    }
    /// The user types into `window` now: what focus-stealing prevention goes by.
    void touch(xcb_window_t window)
    {
        xcb_client_message_event_t event = {};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("_NET_ACTIVE_WINDOW");
        event.data.data32[0] = 2;
        xcb_send_event(m_connection, 0, m_root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char *>(&event));
        xcb_flush(m_connection);
    }
    bool isInFront(xcb_window_t window)
    {
        const auto active = property(m_root, "_NET_ACTIVE_WINDOW");
        const auto stack = property(m_root, "_NET_CLIENT_LIST_STACKING");
        return !active.empty() && active.front() == window && !stack.empty() && stack.back() == window;
    }
    /// Takes in what was sent to the root since.
    void listen()
    {
        while (auto event = own(xcb_poll_for_event(m_connection))) {
            if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
                continue;
            const auto *message = reinterpret_cast<const xcb_client_message_event_t *>(event.get());
            if (message->format == 8)
                startupText.append(reinterpret_cast<const char *>(message->data.data8), 20);
            else if (message->type == atom("_NET_ACTIVE_WINDOW"))
                activations.emplace_back(message->data.data32[0], message->data.data32[1]);
        }
    }
    QByteArray startupText;                               ///< Of the start-up messages heard.
    std::vector<std::pair<quint32, quint32>> activations; ///< Source and time of those heard.

private:
    template <typename T>
    static std::unique_ptr<T, void (*)(void *)> own(T *memory)
    {
        return {memory, std::free};
    }

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
};

constexpr char blurProperty[] = "_KDE_NET_WM_BLUR_BEHIND_REGION";

xcb_window_t idOf(QWindow &window)
{
    return static_cast<xcb_window_t>(window.winId());
}

} // namespace

TEST(BlurRectangles, AreDevicePixelsWithoutGapsOrNegatives)
{
    EXPECT_THAT(blurRectangles(QRect(10, 20, 30, 40), 2.0), ElementsAre(20U, 40U, 60U, 80U));
    const QRegion halves = QRegion(QRect(0, 0, 1, 1)) + QRect(0, 1, 2, 1);
    EXPECT_THAT(blurRectangles(halves, 1.5), ElementsAre(0U, 0U, 2U, 2U, 0U, 2U, 3U, 1U));
    EXPECT_THAT(blurRectangles(QRect(-10, -10, 15, 10), 1.0), ::testing::IsEmpty());
    EXPECT_THAT(blurRectangles(QRect(-10, 0, 15, 10), 1.0), ElementsAre(0U, 0U, 5U, 10U));
}

TEST(X11WindowEffects, FollowsWhetherTheCompositorOffersBlur)
{
    Peer compositor;
    const auto early = chooseWindowEffects();
    EXPECT_FALSE(early->canBlurBehind());
    EXPECT_TRUE(early->canPlaceWindows());
    compositor.setRootProperty(blurProperty, true);
    EXPECT_TRUE(QTest::qWaitFor([&early] { return early->canBlurBehind(); }, patience));
    EXPECT_TRUE(chooseWindowEffects()->canBlurBehind());
    compositor.setRootProperty(blurProperty, false);
    EXPECT_TRUE(QTest::qWaitFor([&early] { return !early->canBlurBehind(); }, patience));
}

TEST(X11WindowEffects, WindowsShowThroughWhereACompositorRuns)
{
    Peer compositor;
    const auto effects = chooseWindowEffects();
    EXPECT_FALSE(effects->canShowThrough());
    compositor.setCompositing(true);
    EXPECT_TRUE(QTest::qWaitFor([&effects] { return effects->canShowThrough(); }, patience));
    compositor.setCompositing(false);
    EXPECT_TRUE(QTest::qWaitFor([&effects] { return !effects->canShowThrough(); }, patience));
}

TEST(X11WindowEffects, SetsAndTakesBackTheBlurRegion)
{
    Peer peer;
    const auto effects = chooseWindowEffects();
    QRasterWindow window;
    const auto region = [&] { return peer.property(idOf(window), blurProperty); };
    ASSERT_EQ(window.devicePixelRatio(), 2.0);
    effects->setBlurBehind(&window, QRect(5, 6, 70, 80));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !region().empty(); }, patience));
    EXPECT_THAT(region(), ElementsAre(10U, 12U, 140U, 160U));
    effects->setBlurBehind(&window, QRegion());
    EXPECT_TRUE(QTest::qWaitFor([&] { return region().empty(); }, patience));
    effects->setBlurBehind(nullptr, QRegion());
}

TEST(X11WindowEffects, BringsAWindowForwardFromBehindHiddenAndMinimised)
{
    Peer other;
    const auto effects = chooseWindowEffects();
    QRasterWindow window;
    window.resize(100, 100);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, patience));
    const xcb_window_t cover = other.openWindow();
    const auto coverIt = [&] {
        return QTest::qWaitFor(
            [&] {
                other.touch(cover);
                return other.isInFront(cover);
            },
            patience);
    };
    const auto comesForward = [&](const QString &token) {
        effects->bringToFront(&window, token);
        return QTest::qWaitFor([&] { return other.isInFront(idOf(window)) && window.isActive(); }, patience);
    };

    ASSERT_TRUE(coverIt());
    EXPECT_TRUE(comesForward({}));
    EXPECT_TRUE(comesForward({})) << "already in front";

    window.hide();
    ASSERT_TRUE(coverIt());
    EXPECT_TRUE(comesForward({}));

    window.showMinimized();
    ASSERT_TRUE(coverIt());
    EXPECT_TRUE(comesForward(QStringLiteral("panel-1-host-0_TIME1")));
    EXPECT_FALSE(window.windowStates() & Qt::WindowMinimized);
    effects->bringToFront(nullptr, {});
}

TEST(X11WindowEffects, AsksForTheUserAndEndsTheStartUpSequenceOfItsToken)
{
    Peer panel;
    const auto effects = chooseWindowEffects();
    QRasterWindow window;
    effects->bringToFront(&window, QStringLiteral("a plain token"));
    effects->bringToFront(&window, QStringLiteral("panel-1-some.long.host.name-0_TIME99"));
    const QByteArray expected = "remove: ID=\"panel-1-some.long.host.name-0_TIME99\"";
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            panel.listen();
            return panel.startupText.size() > expected.size();
        },
        patience));
    EXPECT_EQ(QByteArray(panel.startupText.constData()), expected);
    // Source 2 is a pager: what a user asked for. Qt's own requests are of source 1.
    EXPECT_THAT(panel.activations, ::testing::IsSupersetOf({std::pair(2U, 0U), std::pair(2U, 99U)}));
}

TEST(WaylandWindowEffects, LeavesNoTokenBehind)
{
    EXPECT_FALSE(WaylandWindowEffects::isAvailable());
    WaylandWindowEffects effects;
    QRasterWindow window;
    effects.bringToFront(&window, QStringLiteral("token"));
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    EXPECT_FALSE(effects.canBlurBehind());
    EXPECT_FALSE(effects.canPlaceWindows());
}

int main(int argc, char **argv)
{
    for (const char *name : {"DBUS_SESSION_BUS_ADDRESS", "WAYLAND_DISPLAY", "DESKTOP_STARTUP_ID"})
        qunsetenv(name);
    const quillbay::testing::TestHome home;
    quillbay::testing::XServer server;
    qputenv("DISPLAY", server.display());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_SCALE_FACTOR", "2");
    server.startWindowManager();
    QGuiApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

#include "platform/linux/launching/XdgActivation.h"

#include "xdg-activation-v1-server-protocol.h"

#include <QTest>

#include <cstring>

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>
#include <wayland-client.h>
#include <wayland-server.h>

using namespace quillbay::platform;
using ::testing::ElementsAre;

namespace {

/// A compositor with a seat and, if asked for, the activation protocol, in the test's own process.
class Compositor
{
public:
    explicit Compositor(bool withActivation)
    {
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
            qFatal("no socket pair");
        m_server = wl_display_create();
        wl_client_create(m_server, ends[0]);
        wl_global_create(m_server, &wl_seat_interface, 5, this, bindSeat);
        if (withActivation)
            wl_global_create(m_server, &xdg_activation_v1_interface, 1, this, bindActivation);
        client = wl_display_connect_to_fd(ends[1]);
    }
    ~Compositor()
    {
        wl_display_disconnect(client);
        wl_display_destroy_clients(m_server);
        wl_display_destroy(m_server);
    }
    Compositor(const Compositor &) = delete;
    Compositor &operator=(const Compositor &) = delete;

    // Carries messages to and fro until the condition holds; the event loop runs meanwhile.
    template <typename Condition>
    bool runUntil(Condition condition)
    {
        return QTest::qWaitFor(
            [&] {
                wl_display_flush(client);
                wl_event_loop_dispatch(wl_display_get_event_loop(m_server), 0);
                wl_display_flush_clients(m_server);
                if (wl_display_prepare_read(client) == 0)
                    readable() ? static_cast<void>(wl_display_read_events(client))
                               : wl_display_cancel_read(client);
                wl_display_dispatch_pending(client);
                return condition();
            },
            10'000);
    }

    void click(uint32_t serial) { wl_pointer_send_button(m_pointer, serial, 0, 272, 1); }

    wl_display *client = nullptr;
    bool answering = true;
    bool hasPointer() const { return m_pointer != nullptr; }
    bool hasSeenGoodbye() const { return m_destroyed; }
    std::vector<std::string> requests; ///< In the order of the protocol's calls.

private:
    bool readable() const
    {
        fd_set set;
        FD_ZERO(&set);
        FD_SET(wl_display_get_fd(client), &set);
        timeval none{0, 0};
        return select(wl_display_get_fd(client) + 1, &set, nullptr, nullptr, &none) > 0;
    }

    static Compositor *self(wl_resource *resource)
    {
        return static_cast<Compositor *>(wl_resource_get_user_data(resource));
    }

    static wl_resource *make(wl_client *client, const wl_interface *interface, wl_resource *like, uint32_t id,
                             const void *implementation, void *data)
    {
        wl_resource *resource =
            wl_resource_create(client, interface, like ? wl_resource_get_version(like) : 1, id);
        wl_resource_set_implementation(resource, implementation, data, nullptr);
        return resource;
    }

    static void destroyed(wl_client *, wl_resource *resource) { wl_resource_destroy(resource); }

    static void bindSeat(wl_client *client, void *data, uint32_t version, uint32_t id)
    {
        static const struct wl_pointer_interface pointer = {
            [](wl_client *, wl_resource *, uint32_t, wl_resource *, int32_t, int32_t) {}, destroyed};
        static const struct wl_seat_interface seat = {
            [](wl_client *owner, wl_resource *resource, uint32_t pointerId) {
                self(resource)->m_pointer =
                    make(owner, &wl_pointer_interface, resource, pointerId, &pointer, self(resource));
            },
            [](wl_client *, wl_resource *, uint32_t) {},
            [](wl_client *, wl_resource *, uint32_t) {},
            destroyed,
        };
        wl_resource *resource = wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
        wl_resource_set_implementation(resource, &seat, data, nullptr);
        wl_seat_send_capabilities(resource, WL_SEAT_CAPABILITY_POINTER);
    }

    static void bindActivation(wl_client *client, void *data, uint32_t, uint32_t id)
    {
        static const struct xdg_activation_v1_interface activation = {
            [](wl_client *, wl_resource *resource) {
                self(resource)->m_destroyed = true;
                wl_resource_destroy(resource);
            },
            getToken,
            [](wl_client *, wl_resource *, const char *, wl_resource *) {},
        };
        make(client, &xdg_activation_v1_interface, nullptr, id, &activation, data);
    }

    static void getToken(wl_client *client, wl_resource *parent, uint32_t id)
    {
        static const struct xdg_activation_token_v1_interface token = {
            [](wl_client *, wl_resource *resource, uint32_t serial, wl_resource *seat) {
                EXPECT_STREQ(wl_resource_get_class(seat), "wl_seat");
                self(resource)->requests.push_back("serial " + std::to_string(serial));
            },
            [](wl_client *, wl_resource *resource, const char *applicationId) {
                self(resource)->requests.push_back(std::string("application ") + applicationId);
            },
            [](wl_client *, wl_resource *resource, wl_resource *) {
                self(resource)->requests.push_back("surface");
            },
            [](wl_client *, wl_resource *resource) {
                Compositor *compositor = self(resource);
                compositor->requests.push_back("commit");
                if (compositor->answering)
                    xdg_activation_token_v1_send_done(resource, "the-token");
            },
            destroyed,
        };
        make(client, &xdg_activation_token_v1_interface, parent, id, &token, self(parent));
    }

    wl_display *m_server = nullptr;
    wl_resource *m_pointer = nullptr;
    bool m_destroyed = false;
};

struct Answers
{
    std::vector<QString> tokens;

    XdgActivation::Answer keep()
    {
        return [this](const QString &token) { tokens.push_back(token); };
    }
};

} // namespace

TEST(XdgActivation, GivesATokenForTheLastInput)
{
    Compositor compositor(true);
    Answers answers;
    XdgActivation activation(compositor.client);
    ASSERT_TRUE(compositor.runUntil([&] { return activation.isOffered() && compositor.hasPointer(); }));
    compositor.click(41);
    compositor.click(42);
    bool arrived = false;
    ASSERT_TRUE(compositor.runUntil([&] { return std::exchange(arrived, true); }));
    activation.request(nullptr, QStringLiteral("org.example.App"), answers.keep());
    EXPECT_TRUE(compositor.runUntil([&] { return !answers.tokens.empty(); }));
    EXPECT_THAT(answers.tokens, ElementsAre(QStringLiteral("the-token")));
    EXPECT_THAT(compositor.requests, ElementsAre("serial 42", "application org.example.App", "commit"));
}

TEST(XdgActivation, DoesWithoutInputAndId)
{
    Compositor compositor(true);
    Answers answers;
    XdgActivation activation(compositor.client);
    ASSERT_TRUE(compositor.runUntil([&] { return activation.isOffered(); }));
    activation.request(nullptr, {}, answers.keep());
    EXPECT_TRUE(compositor.runUntil([&] { return !answers.tokens.empty(); }));
    EXPECT_THAT(answers.tokens, ElementsAre(QStringLiteral("the-token")));
    EXPECT_THAT(compositor.requests, ElementsAre("commit"));
}

TEST(XdgActivation, DoesNotWaitForever)
{
    Compositor compositor(true);
    compositor.answering = false;
    Answers answers;
    XdgActivation activation(compositor.client, 20);
    ASSERT_TRUE(compositor.runUntil([&] { return activation.isOffered(); }));
    activation.request(nullptr, {}, answers.keep());
    EXPECT_TRUE(compositor.runUntil([&] { return !answers.tokens.empty(); }));
    EXPECT_THAT(answers.tokens, ElementsAre(QString()));
}

TEST(XdgActivation, AnswersEmptyWithoutTheProtocolOrWhenItGoes)
{
    Answers answers;
    {
        Compositor compositor(false);
        XdgActivation activation(compositor.client);
        ASSERT_TRUE(compositor.runUntil([&] { return compositor.hasPointer(); }));
        EXPECT_FALSE(activation.isOffered());
        activation.request(nullptr, {}, answers.keep());
        EXPECT_THAT(answers.tokens, ElementsAre(QString()));
    }
    answers.tokens.clear();
    Compositor compositor(true);
    compositor.answering = false;
    {
        XdgActivation activation(compositor.client);
        ASSERT_TRUE(compositor.runUntil([&] { return activation.isOffered(); }));
        activation.request(nullptr, {}, answers.keep());
    }
    EXPECT_THAT(answers.tokens, ElementsAre(QString()));
    EXPECT_TRUE(compositor.runUntil([&] { return compositor.hasSeenGoodbye(); }));
}

// Times a program from outside, by what stands on the screen: screen_probe X,Y,WIDTH,HEIGHT PROGRAM
// [ARGUMENT...]
//
// Looks at one region of the root window about every millisecond. The region must be of one colour before the
// program is started. Starts it, waits for a grid of icons in the region, then takes commands from standard
// input, one a line, and answers each with one line; at the end of the input the program is terminated.
//
//   (start)                 start CONTENT SETTLED PID
//   key NAME                key FIRST SETTLED      presses a key; FIRST is when the picture first changed
//   hide close|signal       hide                   until the region is as it was before the start
//   summon hotkey|signal    summon CONTENT SETTLED
//
// Times are milliseconds since the start, the key or the summons: SETTLED until the last change before some
// tenths of a second without one, CONTENT until nine tenths of the icons that are there then. Icons are told
// from text and background by being colourful. Hiding closes the active window through the window manager or
// sends SIGUSR1; summoning presses Control+Alt+N or sends SIGUSR1. What takes too long ends the probe with
// status 1.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto pollInterval = 1ms;
constexpr auto quietTime = 300ms; ///< Without a change, after which a picture counts as settled.
constexpr auto patience = 30s;
/// At least this share of the region is covered by the icons of a grid.
constexpr double gridShare = 0.1;
/// How far the channels of a colourful pixel lie apart.
constexpr uint32_t colourfulness = 48;

constexpr uint32_t keysymBackSpace = 0xff08;
constexpr uint32_t keysymControl = 0xffe3;
constexpr uint32_t keysymAlt = 0xffe9;

pid_t child = 0; ///< The program under measurement, once it runs.

[[noreturn]] void fail(const std::string &reason)
{
    std::fprintf(stderr, "screen_probe: %s\n", reason.c_str());
    std::exit(EXIT_FAILURE);
}

struct Free
{
    void operator()(void *pointer) const { std::free(pointer); }
};
template <typename Reply>
using Owned = std::unique_ptr<Reply, Free>;

struct Region
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

using Picture = std::vector<uint32_t>; ///< Pixels of the region, row by row, 0x00rrggbb.

class Screen
{
public:
    explicit Screen(const Region &region);

    /// The region as it stands now; valid until the next call.
    const Picture &grab();
    /// Presses the keys in that order and releases them in the opposite one.
    void press(const std::vector<uint32_t> &keysyms);
    void closeActiveWindow();

private:
    xcb_atom_t atom(const char *name) const;
    uint8_t keycode(uint32_t keysym) const;

    xcb_connection_t *m_connection;
    const xcb_screen_t *m_screen;
    Region m_region;
    xcb_shm_seg_t m_segment;
    const uint32_t *m_shared = nullptr;
    Picture m_picture;
};

Screen::Screen(const Region &region)
    : m_connection(xcb_connect(nullptr, nullptr))
    , m_screen(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data)
    , m_region(region)
    , m_segment(xcb_generate_id(m_connection))
    , m_picture(size_t(region.width) * size_t(region.height))
{
    if (xcb_connection_has_error(m_connection) || m_screen->root_depth != 24)
        fail("no display of 24 bits");
    const int shared = shmget(IPC_PRIVATE, m_picture.size() * sizeof(uint32_t), IPC_CREAT | 0600);
    void *memory = shared < 0 ? nullptr : shmat(shared, nullptr, 0);
    if (!memory || memory == reinterpret_cast<void *>(-1))
        fail("no shared memory");
    m_shared = static_cast<const uint32_t *>(memory);
    const auto attached = xcb_shm_attach_checked(m_connection, m_segment, uint32_t(shared), false);
    const Owned<xcb_generic_error_t> error(xcb_request_check(m_connection, attached));
    shmctl(shared, IPC_RMID, nullptr);
    if (error)
        fail("the display does not share memory");
    // Out of the way: a pointer over a tile changes it.
    xcb_warp_pointer(m_connection, XCB_NONE, m_screen->root, 0, 0, 0, 0, 0, 0);
}

const Picture &Screen::grab()
{
    const auto asked = xcb_shm_get_image(
        m_connection, m_screen->root, int16_t(m_region.x), int16_t(m_region.y), uint16_t(m_region.width),
        uint16_t(m_region.height), ~0U, XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment, 0);
    const Owned<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(m_connection, asked, nullptr));
    if (!reply)
        fail("the region cannot be read");
    std::memcpy(m_picture.data(), m_shared, m_picture.size() * sizeof(uint32_t));
    return m_picture;
}

xcb_atom_t Screen::atom(const char *name) const
{
    const auto asked = xcb_intern_atom(m_connection, false, uint16_t(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, asked, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

uint8_t Screen::keycode(uint32_t keysym) const
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const auto asked = xcb_get_keyboard_mapping(m_connection, setup->min_keycode, uint8_t(count));
    const Owned<xcb_get_keyboard_mapping_reply_t> reply(
        xcb_get_keyboard_mapping_reply(m_connection, asked, nullptr));
    for (int i = 0; reply && i < count; ++i) {
        if (xcb_get_keyboard_mapping_keysyms(reply.get())[i * reply->keysyms_per_keycode] == keysym)
            return uint8_t(setup->min_keycode + i);
    }
    fail("the keyboard lacks a key");
}

void Screen::press(const std::vector<uint32_t> &keysyms)
{
    std::vector<uint8_t> keys;
    for (const uint32_t keysym : keysyms)
        keys.push_back(keycode(keysym));
    for (const uint8_t key : keys)
        xcb_test_fake_input(m_connection, XCB_KEY_PRESS, key, 0, m_screen->root, 0, 0, 0);
    for (auto key = keys.crbegin(); key != keys.crend(); ++key)
        xcb_test_fake_input(m_connection, XCB_KEY_RELEASE, *key, 0, m_screen->root, 0, 0, 0);
    xcb_flush(m_connection);
}

void Screen::closeActiveWindow()
{
    const auto asked = xcb_get_property(m_connection, false, m_screen->root, atom("_NET_ACTIVE_WINDOW"),
                                        XCB_ATOM_WINDOW, 0, 1);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, asked, nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) != int(sizeof(xcb_window_t)))
        fail("no window is active");
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    std::memcpy(&message.window, xcb_get_property_value(reply.get()), sizeof message.window);
    message.type = atom("_NET_CLOSE_WINDOW");
    xcb_send_event(m_connection, false, m_screen->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection);
}

/// The share of colourful pixels, of every third one of every third row.
double iconShare(const Picture &picture, int width)
{
    size_t seen = 0;
    size_t colourful = 0;
    for (size_t row = 0; row < picture.size(); row += size_t(width) * 3) {
        for (size_t i = row; i < row + size_t(width); i += 3, ++seen) {
            const uint32_t pixel = picture[i];
            const auto [least, most] = std::minmax({pixel >> 16 & 0xff, pixel >> 8 & 0xff, pixel & 0xff});
            colourful += most - least >= colourfulness ? 1 : 0;
        }
    }
    return double(colourful) / double(seen);
}

class Probe
{
public:
    Probe(const Region &region, char **command);

    void start();
    void key(const std::string &name);
    void hide(const std::string &way);
    void summon(const std::string &way);

private:
    struct Times
    {
        double first = 0;
        double settled = 0;
    };
    using Measure = std::function<double(const Picture &)>;

    /// Waits until the measure of a settled picture is at least `enough`: when it first had nine tenths of
    /// its last value, and when the picture last changed.
    Times watch(Clock::time_point since, const char *otherwise, double enough, const Measure &measure);
    Times watchForGrid(Clock::time_point since, const char *otherwise);

    Region m_region;
    char **m_command;
    Screen m_screen;
    Picture m_bare; ///< The region before the program was started.
};

Probe::Probe(const Region &region, char **command)
    : m_region(region)
    , m_command(command)
    , m_screen(region)
{
    const auto isUniform = [](const Picture &picture) -> double {
        return std::equal(picture.cbegin() + 1, picture.cend(), picture.cbegin());
    };
    watch(Clock::now(), "the region is not bare", 1, isUniform);
    m_bare = m_screen.grab();
}

Probe::Times Probe::watch(Clock::time_point since, const char *otherwise, double enough,
                          const Measure &measure)
{
    struct Change
    {
        Clock::time_point time;
        double value;
    };
    std::vector<Change> changes;
    Picture last;
    for (;;) {
        const Picture &picture = m_screen.grab();
        const Clock::time_point now = Clock::now();
        if (picture != last) {
            last = picture;
            changes.push_back({now, measure(picture)});
        }
        const Change &latest = changes.back();
        if (latest.value >= enough && now - latest.time > quietTime)
            break;
        if (now - since > patience)
            fail(otherwise);
        std::this_thread::sleep_for(pollInterval);
    }
    const auto first = std::find_if(changes.cbegin(), changes.cend(), [&changes](const Change &change) {
        return change.value >= 0.9 * changes.back().value;
    });
    const auto after = [since](const Change &change) {
        return std::chrono::duration<double, std::milli>(change.time - since).count();
    };
    return {after(*first), after(changes.back())};
}

Probe::Times Probe::watchForGrid(Clock::time_point since, const char *otherwise)
{
    return watch(since, otherwise, gridShare,
                 [this](const Picture &picture) { return iconShare(picture, m_region.width); });
}

void Probe::start()
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const Clock::time_point since = Clock::now();
    pid_t started = 0;
    if (posix_spawnp(&started, m_command[0], &actions, nullptr, m_command, environ) != 0)
        fail(std::string("cannot start ") + m_command[0]);
    child = started;
    posix_spawn_file_actions_destroy(&actions);
    const Times times = watchForGrid(since, "no grid after the start");
    std::printf("start %.2f %.2f %d\n", times.first, times.settled, int(child));
}

void Probe::key(const std::string &name)
{
    if (name != "BackSpace" && name.size() != 1)
        fail("no key is called " + name);
    const Picture before = m_screen.grab();
    const Clock::time_point since = Clock::now();
    m_screen.press({name.size() == 1 ? uint32_t(name.front()) : keysymBackSpace});
    const Times times =
        watch(since, "a key changes nothing", 1, [&before](const Picture &p) { return p != before ? 1 : 0; });
    std::printf("key %.2f %.2f\n", times.first, times.settled);
}

void Probe::hide(const std::string &way)
{
    if (way == "close")
        m_screen.closeActiveWindow();
    else if (way != "signal" || kill(child, SIGUSR1) != 0)
        fail("cannot hide by " + way);
    watch(Clock::now(), "the window does not go", 1,
          [this](const Picture &p) { return p == m_bare ? 1 : 0; });
    std::printf("hide\n");
}

void Probe::summon(const std::string &way)
{
    const Clock::time_point since = Clock::now();
    if (way == "hotkey")
        m_screen.press({keysymControl, keysymAlt, 'n'});
    else if (way != "signal" || kill(child, SIGUSR1) != 0)
        fail("cannot summon by " + way);
    const Times times = watchForGrid(since, "no grid after the summons");
    std::printf("summon %.2f %.2f\n", times.first, times.settled);
}

void endChild()
{
    if (child <= 0)
        return;
    kill(child, SIGTERM);
    const Clock::time_point since = Clock::now();
    while (waitpid(child, nullptr, WNOHANG) == 0) {
        if (Clock::now() - since > patience)
            kill(child, SIGKILL);
        std::this_thread::sleep_for(pollInterval);
    }
}

} // namespace

int main(int argc, char **argv)
{
    Region region;
    if (argc < 3 ||
        std::sscanf(argv[1], "%d,%d,%d,%d", &region.x, &region.y, &region.width, &region.height) != 4 ||
        region.width < 1 || region.height < 1) {
        std::fputs("usage: screen_probe X,Y,WIDTH,HEIGHT PROGRAM [ARGUMENT...]\n", stderr);
        return 2;
    }
    setvbuf(stdout, nullptr, _IOLBF, 0);
    // The program goes with the probe, also when that fails in the middle.
    std::atexit(endChild);
    Probe probe(region, argv + 2);
    probe.start();
    std::string command;
    std::string argument;
    while (std::cin >> command >> argument) {
        if (command == "key")
            probe.key(argument);
        else if (command == "hide")
            probe.hide(argument);
        else if (command == "summon")
            probe.summon(argument);
        else
            fail("no command is called " + command);
    }
    return EXIT_SUCCESS;
}

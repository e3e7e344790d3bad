#include "platform/linux/colors/X11Pick.h"

#include <algorithm>

#include <xcb/xcbext.h>

namespace quillbay::platform {

namespace {

template <typename T>
using Reply = std::unique_ptr<T, Freed>;

constexpr int triesForGrab = 25;
constexpr int timeBetweenTries = 20; // milliseconds
constexpr std::uint32_t allPlanes = ~0U;

// Of the X protocol's list of keysyms; the second of each pair is on the number pad.
enum Keysym : xcb_keysym_t {
    Return = 0xff0d,
    Enter = 0xff8d,
    Space = 0x0020,
    Escape = 0xff1b,
    Left = 0xff51,
    Up = 0xff52,
    Right = 0xff53,
    Down = 0xff54,
    PadLeft = 0xff96,
    PadUp = 0xff97,
    PadRight = 0xff98,
    PadDown = 0xff99
};

ColorSample cancelled()
{
    return {ColorSample::Outcome::Cancelled, 0, 0, 0, {}};
}

QString hexText(const QColor &color)
{
    return color.name().toUpper();
}

} // namespace

X11Pick::X11Pick(const QByteArray &display, const QList<X11Monitor> &monitors)
    : m_connection(xcb_connect(display.isNull() ? nullptr : display.constData(), nullptr))
    , m_monitors(monitors)
    , m_triesLeft(triesForGrab)
{
    qRegisterMetaType<ColorSample>();
    m_retry.setSingleShot(true);
    m_retry.setInterval(timeBetweenTries);
    connect(&m_retry, &QTimer::timeout, this, &X11Pick::grab);
}

X11Pick::~X11Pick()
{
    m_notifier.reset();
    xcb_disconnect(m_connection);
}

void X11Pick::start()
{
    if (xcb_connection_has_error(m_connection)) {
        fail("the X server takes no further connection");
        return;
    }
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_format = X11PixelFormat::ofRoot(m_connection);
    if (!m_format) {
        fail("the screen shows colours of a palette");
        return;
    }
    m_monitors.append({QRect(0, 0, m_screen->width_in_pixels, m_screen->height_in_pixels), 1});
    grab();
}

void X11Pick::grab()
{
    if (grabPointer() && grabKeyboard())
        begin();
    else if (--m_triesLeft > 0)
        m_retry.start();
    else
        fail("another program holds the pointer or the keyboard");
}

bool X11Pick::grabPointer()
{
    constexpr std::uint16_t events =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
    const auto cookie = xcb_grab_pointer(m_connection, 0, m_screen->root, events, XCB_GRAB_MODE_ASYNC,
                                         XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, crosshair(), XCB_CURRENT_TIME);
    const Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(m_connection, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

bool X11Pick::grabKeyboard()
{
    const auto cookie = xcb_grab_keyboard(m_connection, 0, m_screen->root, XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(m_connection, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

xcb_cursor_t X11Pick::crosshair() const
{
    constexpr std::uint16_t glyph = 34; // XC_crosshair
    constexpr char name[] = "cursor";
    const xcb_font_t font = xcb_generate_id(m_connection);
    const xcb_cursor_t cursor = xcb_generate_id(m_connection);
    xcb_open_font(m_connection, font, sizeof name - 1, name);
    const auto made = xcb_create_glyph_cursor_checked(m_connection, cursor, font, font, glyph, glyph + 1, 0,
                                                      0, 0, 0xffff, 0xffff, 0xffff);
    const Reply<xcb_generic_error_t> error(xcb_request_check(m_connection, made));
    xcb_close_font(m_connection, font);
    return error ? xcb_cursor_t(XCB_CURSOR_NONE) : cursor;
}

void X11Pick::begin()
{
    readKeymap();
    const Reply<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_screen->root), nullptr));
    if (pointer)
        pointerAt({pointer->root_x, pointer->root_y});
    m_pixelsRequest = xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root, 0, 0,
                                    m_screen->width_in_pixels, m_screen->height_in_pixels, allPlanes)
                          .sequence;
    m_notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11Pick::pump);
    pump();
}

void X11Pick::readKeymap()
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    m_firstKeycode = setup->min_keycode;
    const auto cookie = xcb_get_keyboard_mapping(m_connection, setup->min_keycode,
                                                 std::uint8_t(setup->max_keycode - setup->min_keycode + 1));
    const Reply<xcb_get_keyboard_mapping_reply_t> reply(
        xcb_get_keyboard_mapping_reply(m_connection, cookie, nullptr));
    if (!reply || reply->keysyms_per_keycode == 0)
        return;
    const xcb_keysym_t *keysyms = xcb_get_keyboard_mapping_keysyms(reply.get());
    const int count = xcb_get_keyboard_mapping_keysyms_length(reply.get());
    for (int i = 0; i < count; i += reply->keysyms_per_keycode)
        m_keysyms.push_back(keysyms[i]);
}

/// Handles all that has come, and what comes while it works: what the library has already read wakes no
/// notifier.
void X11Pick::pump()
{
    if (xcb_flush(m_connection) <= 0) {
        fail("the connection to the X server is broken");
        return;
    }
    if (!hasScreen())
        return;
    while (!m_isOver) {
        if (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)})
            handle(*event);
        else if (m_pointerMoved)
            moveLoupe();
        else
            break;
    }
    // A key may have moved the pointer: the server is to hear of it now, not with the next event.
    if (!m_isOver && xcb_flush(m_connection) <= 0)
        fail("the connection to the X server is broken");
}

/// Whether the picture of the screen has come.
bool X11Pick::hasScreen()
{
    if (m_pixelsRequest == 0)
        return m_pixels != nullptr;
    void *answer = nullptr;
    xcb_generic_error_t *error = nullptr;
    if (!xcb_poll_for_reply(m_connection, m_pixelsRequest, &answer, &error))
        return false;
    const Reply<xcb_generic_error_t> failure(error);
    m_pixelsRequest = 0;
    m_pixels.reset(static_cast<xcb_get_image_reply_t *>(answer));
    const std::size_t needed = m_format->stride(m_screen->width_in_pixels) * m_screen->height_in_pixels;
    if (!m_pixels || std::size_t(xcb_get_image_data_length(m_pixels.get())) < needed) {
        m_pixels.reset();
        fail("the X server shows nothing of its screen");
    }
    return m_pixels != nullptr;
}

void X11Pick::handle(const xcb_generic_event_t &event)
{
    constexpr std::uint8_t sentBySomeone = 0x80;
    switch (event.response_type & ~sentBySomeone) {
    case XCB_MOTION_NOTIFY: {
        const auto &motion = reinterpret_cast<const xcb_motion_notify_event_t &>(event);
        pointerAt({motion.root_x, motion.root_y});
        break;
    }
    case XCB_BUTTON_PRESS: {
        const auto &press = reinterpret_cast<const xcb_button_press_event_t &>(event);
        pointerAt({press.root_x, press.root_y});
        if (press.detail == XCB_BUTTON_INDEX_1)
            take();
        else if (press.detail == XCB_BUTTON_INDEX_3)
            m_outcome = cancelled();
        break;
    }
    case XCB_KEY_PRESS:
        pressed(reinterpret_cast<const xcb_key_press_event_t &>(event));
        break;
    case XCB_BUTTON_RELEASE:
    case XCB_KEY_RELEASE:
        released();
        break;
    case XCB_EXPOSE:
        paintLoupe();
        break;
    default:
        break;
    }
}

void X11Pick::pressed(const xcb_key_press_event_t &event)
{
    const auto index = std::size_t(event.detail - m_firstKeycode);
    switch (index < m_keysyms.size() ? m_keysyms[index] : 0) {
    case Return:
    case Enter:
    case Space:
        pointerAt({event.root_x, event.root_y});
        take();
        break;
    case Escape:
        m_outcome = cancelled();
        break;
    case Left:
    case PadLeft:
        movePointer(-1, 0);
        break;
    case Right:
    case PadRight:
        movePointer(1, 0);
        break;
    case Up:
    case PadUp:
        movePointer(0, -1);
        break;
    case Down:
    case PadDown:
        movePointer(0, 1);
        break;
    default:
        break;
    }
}

void X11Pick::released()
{
    // Without an outcome it is the release of what started the sampling.
    if (m_outcome)
        end(*m_outcome);
}

void X11Pick::pointerAt(QPoint position)
{
    const QRect screen = m_monitors.last().area;
    m_pointer = {std::clamp(position.x(), 0, screen.right()), std::clamp(position.y(), 0, screen.bottom())};
    m_pointerMoved = true;
}

/// The server tells the new place by a motion of the pointer.
void X11Pick::movePointer(int x, int y)
{
    xcb_warp_pointer(m_connection, XCB_WINDOW_NONE, XCB_WINDOW_NONE, 0, 0, 0, 0, std::int16_t(x),
                     std::int16_t(y));
}

void X11Pick::take()
{
    const auto color = m_format->channels(pixelAt(m_pointer));
    m_outcome = ColorSample{ColorSample::Outcome::Picked, color.red, color.green, color.blue, {}};
}

/// Of a place on the screen.
std::uint32_t X11Pick::pixelAt(QPoint position) const
{
    const std::uint8_t *line = xcb_get_image_data(m_pixels.get()) +
                               m_format->stride(m_screen->width_in_pixels) * std::size_t(position.y());
    return m_format->pixel(line, position.x());
}

/// What the loupe shows; transparent beyond the screen's edges.
QImage X11Pick::surroundings() const
{
    QImage image(Loupe::pixels, Loupe::pixels, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    for (int y = 0; y < Loupe::pixels; ++y) {
        for (int x = 0; x < Loupe::pixels; ++x) {
            const QPoint place = m_pointer + QPoint(x - Loupe::reach, y - Loupe::reach);
            if (m_monitors.last().area.contains(place))
                image.setPixel(x, y, m_format->color(pixelAt(place)));
        }
    }
    return image;
}

void X11Pick::moveLoupe()
{
    m_pointerMoved = false;
    const X11Monitor &monitor = monitorUnderPointer();
    const Loupe loupe(monitor.ratio);
    m_picture = loupe.picture(surroundings(), hexText(QColor(m_format->color(pixelAt(m_pointer)))));
    placeLoupe({loupe.place(m_pointer, monitor.area), m_picture.size()});
    paintLoupe();
    if (xcb_flush(m_connection) <= 0)
        fail("the connection to the X server is broken");
}

void X11Pick::placeLoupe(const QRect &place)
{
    const auto x = std::int16_t(place.x());
    const auto y = std::int16_t(place.y());
    const auto width = std::uint16_t(place.width());
    const auto height = std::uint16_t(place.height());
    if (m_window != XCB_WINDOW_NONE) {
        const std::uint32_t values[] = {std::uint32_t(x), std::uint32_t(y), width, height,
                                        XCB_STACK_MODE_ABOVE};
        xcb_configure_window(m_connection, m_window,
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                 XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_STACK_MODE,
                             values);
        return;
    }
    m_window = xcb_generate_id(m_connection);
    m_gc = xcb_generate_id(m_connection);
    const std::uint32_t values[] = {1, XCB_EVENT_MASK_EXPOSURE}; // in the order of their bits
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_screen->root, x, y, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, m_screen->root_visual,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_create_gc(m_connection, m_gc, m_window, 0, nullptr);
    xcb_map_window(m_connection, m_window);
}

void X11Pick::paintLoupe()
{
    const QByteArray data = m_format->fromImage(m_picture);
    const auto stride = int(m_format->stride(m_picture.width()));
    // No larger than what every server takes in one request.
    constexpr int mostBytes = 200000;
    const int step = std::max(1, mostBytes / stride);
    for (int y = 0; y < m_picture.height(); y += step) {
        const int rows = std::min(step, m_picture.height() - y);
        xcb_put_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, m_gc,
                      std::uint16_t(m_picture.width()), std::uint16_t(rows), 0, std::int16_t(y), 0,
                      m_screen->root_depth, std::uint32_t(rows * stride),
                      reinterpret_cast<const std::uint8_t *>(data.constData()) + std::ptrdiff_t(y) * stride);
    }
}

const X11Monitor &X11Pick::monitorUnderPointer() const
{
    const auto found =
        std::find_if(m_monitors.cbegin(), m_monitors.cend(),
                     [this](const X11Monitor &monitor) { return monitor.area.contains(m_pointer); });
    return found == m_monitors.cend() ? m_monitors.last() : *found;
}

void X11Pick::end(const ColorSample &sample)
{
    if (m_isOver)
        return;
    m_isOver = true;
    m_retry.stop();
    if (m_notifier)
        m_notifier->setEnabled(false);
    Q_EMIT finished(sample);
}

void X11Pick::fail(const char *reason)
{
    end({ColorSample::Outcome::Unavailable, 0, 0, 0, QString::fromLatin1(reason)});
}

} // namespace quillbay::platform

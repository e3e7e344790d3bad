#include "platform/colors/PaintedScreen.h"

#include <QProcess>

#include <cstdlib>
#include <memory>

namespace quillbay::testing {

namespace {

struct Freed
{
    void operator()(void *reply) const { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, Freed>;

} // namespace

PaintedScreen::PaintedScreen()
    : m_connection(xcb_connect(m_server.display().constData(), nullptr))
{
    if (xcb_connection_has_error(m_connection))
        qFatal("no connection to Xvfb");
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    const std::uint16_t width = m_screen->width_in_pixels;
    const std::uint16_t height = m_screen->height_in_pixels;
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.setPixelColor(x, y, colorAt({x, y}));
    }
    // As the background: a window that goes away leaves it behind.
    const xcb_pixmap_t pixmap = xcb_generate_id(m_connection);
    const xcb_gcontext_t gc = xcb_generate_id(m_connection);
    xcb_create_pixmap(m_connection, m_screen->root_depth, pixmap, m_screen->root, width, height);
    xcb_create_gc(m_connection, gc, pixmap, 0, nullptr);
    constexpr int rows = 20;
    for (int y = 0; y < height; y += rows)
        xcb_put_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, gc, width, rows, 0, std::int16_t(y), 0,
                      m_screen->root_depth, std::uint32_t(rows * picture.bytesPerLine()),
                      picture.constScanLine(y));
    m_window = xcb_generate_id(m_connection);
    const std::uint32_t values[] = {pixmap, 1};
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_screen->root, 0, 0, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, m_screen->root_visual,
                      XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT, values);
    const auto mapped = xcb_map_window_checked(m_connection, m_window);
    if (const Reply<xcb_generic_error_t> error{xcb_request_check(m_connection, mapped)})
        qFatal("the screen cannot be painted");
}

PaintedScreen::~PaintedScreen()
{
    xcb_disconnect(m_connection);
}

QColor PaintedScreen::colorAt(QPoint place)
{
    return QColor(place.x() % 256, place.y() % 256, (place.x() / 256) * 16 + place.y() / 256);
}

void PaintedScreen::xdotool(const char *words) const
{
    QProcess process;
    process.setProcessEnvironment(m_server.environment());
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QStringLiteral("xdotool"), QString::fromLatin1(words).split(QLatin1Char(' ')));
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("xdotool %s failed", words);
}

QPoint PaintedScreen::pointer() const
{
    const Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_screen->root), nullptr));
    return {reply->root_x, reply->root_y};
}

bool PaintedScreen::grabPointer() const
{
    const auto cookie =
        xcb_grab_pointer(m_connection, 0, m_screen->root, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                         XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(m_connection, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void PaintedScreen::letGo() const
{
    const auto cookie = xcb_ungrab_pointer_checked(m_connection, XCB_CURRENT_TIME);
    const Reply<xcb_generic_error_t> error(xcb_request_check(m_connection, cookie));
}

QList<QRect> PaintedScreen::windows() const
{
    QList<QRect> places;
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_screen->root), nullptr));
    const xcb_window_t *children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            m_connection, xcb_get_window_attributes(m_connection, children[i]), nullptr));
        const Reply<xcb_get_geometry_reply_t> place(
            xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, children[i]), nullptr));
        if (children[i] != m_window && attributes && place && attributes->map_state == XCB_MAP_STATE_VIEWABLE)
            places.append(QRect(place->x, place->y, place->width, place->height));
    }
    return places;
}

QImage PaintedScreen::picture(const QRect &area) const
{
    const auto cookie =
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root, std::int16_t(area.x()),
                      std::int16_t(area.y()), std::uint16_t(area.width()), std::uint16_t(area.height()), ~0U);
    const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(m_connection, cookie, nullptr));
    if (!reply)
        return {};
    return QImage(xcb_get_image_data(reply.get()), area.width(), area.height(), 4 * area.width(),
                  QImage::Format_RGB32)
        .copy();
}

} // namespace quillbay::testing

#include "desktop/harness/Screen.h"
#include "desktop/harness/Wait.h"

namespace Orbita {

QImage Screen::shot(QRect rect) const
{
    const QRect whole(0, 0, m_connection.screen().width_in_pixels, m_connection.screen().height_in_pixels);
    rect = rect.isNull() ? whole : rect.intersected(whole);
    // The root's image holds all that is drawn above it, the overlay of a compositor as well.
    const auto cookie = xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_connection.root(),
                                      static_cast<qint16>(rect.x()), static_cast<qint16>(rect.y()),
                                      static_cast<quint16>(rect.width()), static_cast<quint16>(rect.height()), ~0U);
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(m_connection, cookie, nullptr));
    constexpr int bytesPerPixel = 4;
    if (!reply || xcb_get_image_data_length(reply.get()) != rect.width() * rect.height() * bytesPerPixel)
        throw DesktopFailure(QStringLiteral("the screen cannot be read"));
    return QImage(xcb_get_image_data(reply.get()), rect.width(), rect.height(), QImage::Format_RGB32).copy();
}

QColor Screen::pixel(QPoint position) const
{
    return shot(QRect(position, QSize(1, 1))).pixelColor(0, 0);
}

void Screen::waitForPixel(QPoint position, const std::function<bool(QColor)> &condition,
                          const QString &description) const
{
    const auto last = [&] {
        return QStringLiteral("%1 at %2, %3 (it is %4)")
            .arg(description)
            .arg(position.x())
            .arg(position.y())
            .arg(pixel(position).name());
    };
    waitUntil([&] { return condition(pixel(position)); }, last);
}

void Screen::waitForPixel(QPoint position, QColor color) const
{
    waitForPixel(
        position, [color](QColor pixel) { return pixel.rgb() == color.rgb(); },
        QStringLiteral("the screen was ") + color.name());
}

void Screen::setBackground(QColor color)
{
    const xcb_window_t root = m_connection.root();
    const xcb_pixmap_t pixmap = xcb_generate_id(m_connection);
    xcb_create_pixmap(m_connection, m_connection.screen().root_depth, pixmap, root, 1, 1);
    const xcb_gcontext_t context = xcb_generate_id(m_connection);
    const quint32 pixel = color.rgb();
    xcb_create_gc(m_connection, context, pixmap, XCB_GC_FOREGROUND, &pixel);
    const xcb_rectangle_t all{0, 0, 1, 1};
    xcb_poly_fill_rectangle(m_connection, pixmap, context, 1, &all);
    xcb_free_gc(m_connection, context);
    xcb_change_window_attributes(m_connection, root, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(m_connection, 0, root, 0, 0, 0, 0);
    // Compositors paint the background themselves and look for it here.
    for (const char *property : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"})
        m_connection.setValues(root, property, XCB_ATOM_PIXMAP, {pixmap});
    m_connection.sync();
}

} // namespace Orbita

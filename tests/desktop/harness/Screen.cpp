#include "desktop/harness/Screen.h"
#include "desktop/harness/Wait.h"

namespace Orbita {

Screen::~Screen()
{
    if (m_background != XCB_PIXMAP_NONE)
        xcb_free_pixmap(m_connection, m_background);
}

QSize Screen::size() const
{
    return {m_connection.screen().width_in_pixels, m_connection.screen().height_in_pixels};
}

QImage Screen::shot(QRect rect) const
{
    rect = rect.isNull() ? QRect(QPoint(), size()) : rect.intersected(QRect(QPoint(), size()));
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

void Screen::waitForChange(QRect rect, const QImage &before) const
{
    waitUntil([&] { return shot(rect) != before; }, QStringLiteral("the screen changed"));
}

void Screen::setBackground(const QImage &picture)
{
    const xcb_window_t root = m_connection.root();
    const QImage pixels = picture.convertToFormat(QImage::Format_RGB32);
    const xcb_pixmap_t pixmap = xcb_generate_id(m_connection);
    const auto width = static_cast<quint16>(pixels.width());
    xcb_create_pixmap(m_connection, m_connection.screen().root_depth, pixmap, root, width,
                      static_cast<quint16>(pixels.height()));
    const xcb_gcontext_t context = xcb_generate_id(m_connection);
    xcb_create_gc(m_connection, context, pixmap, 0, nullptr);
    // Row by row, as a whole picture may exceed the longest request.
    for (int y = 0; y < pixels.height(); ++y)
        xcb_put_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, 1, 0, static_cast<qint16>(y), 0,
                      m_connection.screen().root_depth, static_cast<quint32>(pixels.width() * 4),
                      pixels.constScanLine(y));
    xcb_free_gc(m_connection, context);
    xcb_change_window_attributes(m_connection, root, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(m_connection, 0, root, 0, 0, 0, 0);
    // Compositors paint the background themselves and look for it here.
    for (const char *property : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"})
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, root, m_connection.atom(property), XCB_ATOM_PIXMAP, 32,
                            1, &pixmap);
    m_connection.sync();
    if (m_background != XCB_PIXMAP_NONE)
        xcb_free_pixmap(m_connection, m_background);
    m_background = pixmap;
}

void Screen::setBackground(QColor color)
{
    QImage tile(16, 16, QImage::Format_RGB32);
    tile.fill(color);
    setBackground(tile);
}

} // namespace Orbita

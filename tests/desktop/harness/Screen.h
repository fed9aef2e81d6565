#pragma once

#include "desktop/harness/XServer.h"

#include <QColor>
#include <QImage>
#include <QRect>

#include <functional>

namespace Orbita {

/// What a person sees: the screen's pixels, a compositor's work included.
class Screen {
public:
    explicit Screen(const XConnection &connection) : m_connection(connection) {}
    ~Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    [[nodiscard]] QSize size() const;
    /// The part \a rect of the screen, the whole of it by default.
    [[nodiscard]] QImage shot(QRect rect = {}) const;
    [[nodiscard]] QColor pixel(QPoint position) const;

    /// Waits until the pixel at \a position passes \a condition.
    void waitForPixel(QPoint position, const std::function<bool(QColor)> &condition, const QString &description) const;
    void waitForPixel(QPoint position, QColor color) const;
    /// Waits until the part \a rect of the screen differs from \a before, a shot of the same part.
    void waitForChange(QRect rect, const QImage &before) const;

    /// Makes \a picture the background, tiled. Window managers that draw a background of their own
    /// (kwin_x11 while it composites) cover it.
    void setBackground(const QImage &picture);
    void setBackground(QColor color);

private:
    const XConnection &m_connection;
    xcb_pixmap_t m_background = XCB_PIXMAP_NONE;
};

} // namespace Orbita

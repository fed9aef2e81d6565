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

    /// The part \a rect of the screen, the whole of it by default.
    [[nodiscard]] QImage shot(QRect rect = {}) const;
    [[nodiscard]] QColor pixel(QPoint position) const;

    /// Waits until the pixel at \a position passes \a condition.
    void waitForPixel(QPoint position, const std::function<bool(QColor)> &condition, const QString &description) const;
    void waitForPixel(QPoint position, QColor color) const;

    /// Once for each server. Window managers that draw a background of their own (kwin_x11 while it composites)
    /// cover it.
    void setBackground(QColor color);

private:
    const XConnection &m_connection;
};

} // namespace Orbita

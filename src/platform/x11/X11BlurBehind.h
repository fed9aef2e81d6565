#pragma once

#include "platform/BlurBehind.h"

namespace Orbita {

class X11Compositor;
class X11Connection;

/// Blur through the property that KWin defined. A compositor offers it by a property of that name on the root window.
class X11BlurBehind final : public BlurBehind {
    Q_OBJECT
public:
    X11BlurBehind(X11Connection &connection, X11Compositor &compositor, QObject *parent = nullptr);

    [[nodiscard]] bool isAvailable() const override { return m_available; }
    void setRegion(QWindow &window, const QRegion &region) override;

private:
    [[nodiscard]] bool isOffered() const;
    void update();

    X11Connection &m_connection;
    X11Compositor &m_compositor;
    bool m_available = false;
};

} // namespace Orbita

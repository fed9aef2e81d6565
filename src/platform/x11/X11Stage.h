#pragma once

#include "platform/Stage.h"

namespace Orbita {

class X11Compositor;
class X11Connection;
class X11WindowManager;

/// Screens as the toolkit knows them, windows moved and raised through it and the window manager.
///
/// Needs the toolkit's X11 platform for its windows. Without a server no button is pressed and nothing is blended.
class X11Stage final : public Stage {
    Q_OBJECT
public:
    X11Stage(X11Connection &connection, X11WindowManager &windowManager, X11Compositor &compositor,
             QObject *parent = nullptr);

    [[nodiscard]] std::vector<Screen> screens() const override;
    void locatePointer(QObject *context, PointerCallback callback) override;
    /// All buttons of the pointer count, the turning of a wheel does not.
    [[nodiscard]] bool areButtonsUp() const override;
    void place(QWindow &window, const QRectF &frame) override;
    void present(QWindow &window) override;
    void flush() override;
    void setInputRegion(QWindow &window, const QRegion &region) override;
    [[nodiscard]] bool isCompositing() const override;

protected:
    [[nodiscard]] QRectF mainScreenOnDesktop() const override;

private:
    X11Connection &m_connection;
    X11WindowManager &m_windowManager;
    X11Compositor &m_compositor;
};

} // namespace Orbita

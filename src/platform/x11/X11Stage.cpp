#include "platform/x11/X11Stage.h"

#include "platform/x11/X11Compositor.h"
#include "platform/x11/X11FrameKeeper.h"
#include "platform/x11/X11OwnWindow.h"
#include "platform/x11/X11WindowManager.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <qpa/qplatformwindow.h>

#include <xcb/shape.h>
#include <xcb/xinput.h>

#include <utility>

namespace Orbita {

namespace {

/// The master pointer that every server starts with.
constexpr xcb_input_device_id_t CorePointer = 2;
/// Bits 4 to 7 are the directions of a wheel; bit 0 stands for no button.
constexpr quint32 NoButtons = 0b11110001;

} // namespace

X11Stage::X11Stage(X11Connection &connection, X11WindowManager &windowManager, X11Compositor &compositor,
                   QObject *parent)
    : Stage(parent), m_connection(connection), m_windowManager(windowManager), m_compositor(compositor)
{
    connect(&compositor, &X11Compositor::presentChanged, this, &Stage::compositingChanged);
    const auto follow
        = [this](QScreen *screen) { connect(screen, &QScreen::geometryChanged, this, &Stage::screensChanged); };
    for (QScreen *screen : QGuiApplication::screens())
        follow(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, follow);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &Stage::screensChanged);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &Stage::screensChanged);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &Stage::screensChanged);
}

std::vector<Stage::Screen> X11Stage::screens() const
{
    std::vector<Screen> found;
    for (const QScreen *screen : QGuiApplication::screens()) // the primary one is the first
        found.push_back({fromDesktop(QRectF(screen->geometry())), screen->devicePixelRatio()});
    return found;
}

void X11Stage::locatePointer(QObject *, PointerCallback callback)
{
    callback(fromDesktop(QPointF(QCursor::pos())));
}

bool X11Stage::areButtonsUp() const
{
    if (!m_connection.hasInputExtension())
        return true;
    const auto cookie = xcb_input_xi_query_pointer(m_connection.xcb(), m_connection.root(), CorePointer);
    const auto pointer = m_connection.reply(xcb_input_xi_query_pointer_reply, cookie);
    if (!pointer)
        return true;
    const uint32_t *mask = xcb_input_xi_query_pointer_buttons(pointer.get());
    const int words = xcb_input_xi_query_pointer_buttons_length(pointer.get());
    // The first word holds buttons 1 to 31.
    return words == 0 || (mask[0] & ~NoButtons) == 0;
}

void X11Stage::place(QWindow &window, const QRectF &frame)
{
    X11FrameKeeper::of(window).place(toDesktop(frame).toAlignedRect());
}

void X11Stage::present(QWindow &window)
{
    xcb_connection_t *sender = toolkitConnection();
    if (sender == nullptr)
        return;
    const xcb_window_t target = xWindow(window);
    // A window that is mapped partly off the screen gets pushed back onto it by some window managers.
    m_windowManager.move(sender, target, window.handle()->geometry().topLeft());
    m_windowManager.activate(sender, target);
    m_windowManager.keepAbove(sender, target);
    m_windowManager.showOnEveryWorkspace(sender, target);
    xcb_flush(sender);
}

void X11Stage::flush()
{
    if (xcb_connection_t *connection = toolkitConnection())
        xcb_flush(connection);
}

void X11Stage::setInputRegion(QWindow &window, const QRegion &region)
{
    xcb_connection_t *sender = toolkitConnection();
    if (sender == nullptr)
        return;
    const xcb_window_t target = xWindow(window);
    if (region.isEmpty()) {
        xcb_shape_mask(sender, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, target, 0, 0, XCB_PIXMAP_NONE);
    } else {
        const auto rectangles = deviceRectangles(region, window.devicePixelRatio());
        xcb_shape_rectangles(sender, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, target, 0, 0,
                             uint32_t(rectangles.size()), rectangles.data());
    }
    xcb_flush(sender);
}

bool X11Stage::isCompositing() const
{
    return m_compositor.isPresent();
}

QRectF X11Stage::mainScreenOnDesktop() const
{
    return QGuiApplication::primaryScreen()->geometry();
}

} // namespace Orbita

// The least that a launcher of this kind can cost with these libraries: a hidden translucent window, made beforehand,
// that a grabbed key shows and Escape hides, and that paints a plain ring. To compare a real one with in the same run.

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QCommandLineParser>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>

#include <X11/keysym.h>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <cstdlib>
#include <memory>

namespace {

class BareRing : public QWidget {
public:
    explicit BareRing(Qt::WindowFlags flags) : QWidget(nullptr, flags | Qt::FramelessWindowHint)
    {
        setAttribute(Qt::WA_TranslucentBackground);
        resize(400, 400);
        winId();
    }

    void appear()
    {
        show();
        raise();
        activateWindow();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(40, 40, 40, 220), 100));
        painter.drawEllipse(rect().center(), 130, 130);
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Escape)
            hide();
    }
};

/// Takes Control and the function key \a number for itself and shows \a ring when they are pressed.
class ShowKey : public QAbstractNativeEventFilter {
public:
    ShowKey(xcb_connection_t *connection, int number, BareRing &ring) : m_ring(ring)
    {
        xcb_key_symbols_t *symbols = xcb_key_symbols_alloc(connection);
        xcb_keycode_t *codes = xcb_key_symbols_get_keycode(symbols, XK_F1 + static_cast<xcb_keysym_t>(number) - 1);
        m_code = codes ? codes[0] : 0;
        std::free(codes);
        xcb_key_symbols_free(symbols);
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        xcb_grab_key(connection, 1, root, XCB_MOD_MASK_CONTROL, m_code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_flush(connection);
    }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *event = static_cast<const xcb_key_press_event_t *>(message);
        if ((event->response_type & 0x7f) != XCB_KEY_PRESS || event->detail != m_code)
            return false;
        m_ring.appear();
        return true;
    }

private:
    BareRing &m_ring;
    xcb_keycode_t m_code = 0;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("bare-window"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A window of one ring; -name sets the first part of WM_CLASS."));
    parser.addHelpOption();
    parser.addOption({QStringLiteral("managed"), QStringLiteral("In the hands of the window manager (the default).")});
    parser.addOption({QStringLiteral("bypass"), QStringLiteral("Out of the hands of the window manager.")});
    parser.addOption({QStringLiteral("now"), QStringLiteral("Show the window at once.")});
    parser.addOption({QStringLiteral("key"), QStringLiteral("Which function key shows it, with Control."),
                      QStringLiteral("number"), QStringLiteral("12")});
    parser.process(application);

    const auto *x11 = application.nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        qFatal("bare-window needs X11");
    const bool bypasses = parser.isSet(QStringLiteral("bypass"));
    BareRing ring(bypasses ? Qt::Window | Qt::X11BypassWindowManagerHint : Qt::Window);
    QApplication::setQuitOnLastWindowClosed(false);
    ShowKey key(x11->connection(), parser.value(QStringLiteral("key")).toInt(), ring);
    application.installNativeEventFilter(&key);
    if (parser.isSet(QStringLiteral("now")))
        ring.appear();
    return QApplication::exec();
}

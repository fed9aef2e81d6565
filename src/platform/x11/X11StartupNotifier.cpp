#include "platform/x11/X11StartupNotifier.h"

#include "platform/Log.h"

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>

#define SN_API_NOT_YET_FROZEN
#include <libsn/sn.h>
#include <xcb/xcb.h>

#include <cstdlib>

namespace Orbita {

namespace {

struct CFree {
    void operator()(void *memory) const { std::free(memory); }
};

/// The name of the program as it stands in ids, where blanks and slashes separate.
constexpr char launcherName[] = "orbita";

} // namespace

class X11StartupNotifier::Connection {
public:
    explicit Connection(const QByteArray &display)
        : m_xcb(xcb_connect(display.isEmpty() ? nullptr : display.constData(), &m_screen))
    {
        if (!isOpen())
            return;
        m_notification = sn_xcb_display_new(m_xcb, nullptr, nullptr);
        makeClockWindow();
    }
    ~Connection()
    {
        if (m_notification)
            sn_display_unref(m_notification);
        xcb_disconnect(m_xcb);
    }
    Q_DISABLE_COPY_MOVE(Connection)

    [[nodiscard]] bool isOpen() const { return xcb_connection_has_error(m_xcb) == 0; }
    [[nodiscard]] xcb_connection_t *xcb() const { return m_xcb; }
    [[nodiscard]] SnDisplay *notification() const { return m_notification; }
    [[nodiscard]] int screen() const { return m_screen; }

    /// The server's time now, which it tells only with an event: here, of a property that did not change.
    /// Nothing came back from a server that went away: 0.
    [[nodiscard]] xcb_timestamp_t serverTime() const
    {
        xcb_change_property(m_xcb, XCB_PROP_MODE_APPEND, m_clockWindow, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                            nullptr);
        xcb_flush(m_xcb);
        while (const std::unique_ptr<xcb_generic_event_t, CFree> event{xcb_wait_for_event(m_xcb)}) {
            if ((event->response_type & 0x7F) == XCB_PROPERTY_NOTIFY)
                return reinterpret_cast<const xcb_property_notify_event_t *>(event.get())->time;
        }
        return 0;
    }

private:
    void makeClockWindow()
    {
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_xcb));
        for (int i = 0; i < m_screen && screens.rem > 1; ++i)
            xcb_screen_next(&screens);
        m_clockWindow = xcb_generate_id(m_xcb);
        const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(m_xcb, XCB_COPY_FROM_PARENT, m_clockWindow, screens.data->root, -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    }

    int m_screen = 0;
    xcb_connection_t *m_xcb;
    SnDisplay *m_notification = nullptr;
    xcb_window_t m_clockWindow = XCB_NONE;
};

namespace {

class X11StartupSequence final : public StartupSequence {
public:
    /// \a connection is what \a context sends its messages over.
    X11StartupSequence(std::shared_ptr<void> connection, xcb_connection_t *xcb, SnLauncherContext *context)
        : m_connection(std::move(connection)), m_xcb(xcb), m_context(context)
    {
    }
    ~X11StartupSequence() override { sn_launcher_context_unref(m_context); }
    Q_DISABLE_COPY_MOVE(X11StartupSequence)

    [[nodiscard]] QByteArray id() const override { return sn_launcher_context_get_startup_id(m_context); }
    void cancel() override
    {
        sn_launcher_context_complete(m_context);
        xcb_flush(m_xcb);
    }

private:
    std::shared_ptr<void> m_connection;
    xcb_connection_t *m_xcb;
    SnLauncherContext *m_context;
};

void describe(SnLauncherContext *context, const Launchee &launchee)
{
    sn_launcher_context_set_name(context, launchee.name.toUtf8().constData());
    sn_launcher_context_set_binary_name(context, QFile::encodeName(launchee.executable).constData());
    if (!launchee.windowClass.isEmpty())
        sn_launcher_context_set_wmclass(context, launchee.windowClass.toUtf8().constData());
    if (!launchee.icon.isEmpty())
        sn_launcher_context_set_icon_name(context, launchee.icon.toUtf8().constData());
    // The library declares a function for this one but does not contain it.
    if (!launchee.desktopFile.isEmpty())
        sn_launcher_context_set_extra_property(context, "APPLICATION_ID",
                                               QFile::encodeName(launchee.desktopFile).constData());
}

} // namespace

X11StartupNotifier::X11StartupNotifier(QByteArray display) : m_display(std::move(display)) {}

X11StartupNotifier::~X11StartupNotifier() = default;

X11StartupNotifier::Connection *X11StartupNotifier::connection()
{
    if (!m_connection)
        m_connection = std::make_shared<Connection>(m_display);
    return m_connection->isOpen() ? m_connection.get() : nullptr;
}

std::unique_ptr<StartupSequence> X11StartupNotifier::begin(const Launchee &launchee)
{
    const Connection *server = connection();
    const xcb_timestamp_t now = server ? server->serverTime() : 0;
    if (now == 0)
        return nullptr;
    SnLauncherContext *context = sn_launcher_context_new(server->notification(), server->screen());
    describe(context, launchee);
    sn_launcher_context_initiate(context, launcherName, QFile::encodeName(launchee.executable).constData(), now);
    xcb_flush(server->xcb());
    return std::make_unique<X11StartupSequence>(m_connection, server->xcb(), context);
}

QByteArray X11StartupNotifier::token()
{
    const Connection *server = connection();
    const xcb_timestamp_t now = server ? server->serverTime() : 0;
    if (now == 0)
        return {};
    return QStringLiteral("%1-%2-%3-%4_TIME%5")
        .arg(QLatin1String(launcherName), QString::number(QCoreApplication::applicationPid()),
             QString::number(m_tokenCount++), QSysInfo::machineHostName(), QString::number(now))
        .toUtf8();
}

} // namespace Orbita

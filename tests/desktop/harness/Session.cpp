#include "desktop/harness/Session.h"
#include "desktop/harness/Wait.h"

namespace Orbita {

DesktopSession::DesktopSession(const SessionOptions &options)
    : m_environment(m_folders.environment()),
      m_server(options.screen, m_environment),
      m_processes(m_folders),
      m_connection(m_server.display())
{
    m_environment.insert(QStringLiteral("DISPLAY"), QString::fromUtf8(m_server.display()));
    if (!options.prefix.isEmpty())
        usePrefix(options.prefix);
    setMonitors(options.monitors);
    if (options.sessionBus) {
        m_busDaemon = startBusDaemon(m_folders.busAddress(), m_environment);
        m_bus = std::make_unique<Bus>(m_folders.busAddress());
    }
    startWindowManager(options.windowManager);
    m_screen.setBackground(options.background);
    if (options.compositor)
        startCompositor();
    if (options.accessibility)
        m_accessibility = std::make_unique<Accessibility>(*m_bus);
}

DesktopSession::~DesktopSession() = default;

Program &DesktopSession::start(const QString &program, const QStringList &arguments,
                               const QProcessEnvironment &extraEnvironment)
{
    QProcessEnvironment environment = m_environment;
    environment.insert(extraEnvironment);
    return *m_programs.emplace_back(std::make_unique<Program>(program, arguments, environment));
}

void DesktopSession::usePrefix(const QString &prefix)
{
    const QString path = m_environment.value(QStringLiteral("PATH"));
    m_environment.insert(QStringLiteral("PATH"), prefix + QStringLiteral("/bin:") + path);
    m_environment.insert(QStringLiteral("XDG_DATA_DIRS"),
                         prefix + QStringLiteral("/share:/usr/local/share:/usr/share"));
}

void DesktopSession::setMonitors(const QList<QRect> &monitors)
{
    // The one output of the virtual server goes to the first; the others have none.
    QString output = QStringLiteral("screen");
    for (const QRect &monitor : monitors) {
        const QString name = QStringLiteral("monitor-%1").arg(monitors.indexOf(monitor));
        const QString geometry = QStringLiteral("%1/0x%2/0+%3+%4")
                                     .arg(monitor.width())
                                     .arg(monitor.height())
                                     .arg(monitor.x())
                                     .arg(monitor.y());
        Program &xrandr = start(QStringLiteral("xrandr"), {QStringLiteral("--setmonitor"), name, geometry, output});
        if (xrandr.waitForExit() != 0)
            throw DesktopFailure(QStringLiteral("xrandr: ") + xrandr.lines().join(QLatin1Char('\n')));
        output = QStringLiteral("none");
    }
}

void DesktopSession::startWindowManager(WindowManager windowManager)
{
    if (windowManager == WindowManager::None)
        return;
    const bool isKWin = windowManager == WindowManager::KWin;
    m_windowManager = std::make_unique<Program>(
        isKWin ? QStringLiteral("kwin_x11") : QStringLiteral("openbox"),
        QStringList{isKWin ? QStringLiteral("--no-kactivities") : QStringLiteral("--sm-disable")}, m_environment);
    // kwin_x11 does not answer as waitForManager() expects, but composites only once it works.
    if (isKWin)
        waitUntil([this] { return m_windows.hasManager() && isComposited(); }, QStringLiteral("kwin_x11 was ready"));
    else
        m_windows.waitForManager();
}

void DesktopSession::stopWindowManager()
{
    m_windowManager.reset();
    waitUntil([this] { return !m_windows.hasManager(); }, QStringLiteral("the window manager had gone"));
}

bool DesktopSession::isComposited() const
{
    const auto cookie = xcb_get_selection_owner(m_connection, m_connection.atom("_NET_WM_CM_S0"));
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void DesktopSession::startCompositor()
{
    m_compositor = std::make_unique<Program>(QStringLiteral("picom"),
                                             QStringList{QStringLiteral("--backend"), QStringLiteral("xrender"),
                                                         QStringLiteral("--config"), QStringLiteral("/dev/null")},
                                             m_environment);
    waitUntil([this] { return isComposited(); }, QStringLiteral("the compositor was ready"));
}

void DesktopSession::stopCompositor()
{
    m_compositor.reset();
    waitUntil([this] { return !isComposited(); }, QStringLiteral("the compositor had gone"));
}

} // namespace Orbita

#pragma once

#include "desktop/harness/Accessibility.h"
#include "desktop/harness/Bus.h"
#include "desktop/harness/Input.h"
#include "desktop/harness/Processes.h"
#include "desktop/harness/Screen.h"
#include "desktop/harness/SessionFolders.h"
#include "desktop/harness/Windows.h"
#include "desktop/harness/XServer.h"

#include <memory>
#include <vector>

namespace Orbita {

enum class WindowManager { None, Openbox, KWin };

struct SessionOptions {
    QSize screen{1280, 800};
    /// Monitors as parts of the screen, the primary one first; empty: one monitor, the whole screen.
    QList<QRect> monitors = {};
    WindowManager windowManager = WindowManager::Openbox;
    /// Whether picom blends translucent windows. kwin_x11 does so by itself.
    bool compositor = false;
    QColor background{0xe8, 0xe8, 0xe8};
    /// Without it, the address of the session bus leads nowhere.
    bool sessionBus = true;
    /// Where the programs of the build are installed. Empty: they are used where they were built, and the desktop does
    /// not know of them.
    QString prefix = {};
    /// Whether the accessibility services run before any program starts. Needs the session bus.
    bool accessibility = false;
};

/// A whole desktop session of a test's own: virtual screen, message bus, folders, window manager.
///
/// Nothing of the session that runs the tests shows through, and nothing that was started in it, by the test or by
/// the bus, outlives it. The programs of the build come first in its PATH. Needs a QCoreApplication.
class DesktopSession {
public:
    /// Returns when all that \a options name is ready. Throws DesktopFailure when something is not.
    explicit DesktopSession(const SessionOptions &options = {});
    ~DesktopSession();
    DesktopSession(const DesktopSession &) = delete;
    DesktopSession &operator=(const DesktopSession &) = delete;

    /// Starts a program, found by its path or its name. The handle lives as long as the session.
    Program &start(const QString &program, const QStringList &arguments = {},
                   const QProcessEnvironment &extraEnvironment = {});
    /// What programs of the session see.
    [[nodiscard]] const QProcessEnvironment &environment() const { return m_environment; }
    [[nodiscard]] const SessionFolders &folders() const { return m_folders; }

    [[nodiscard]] const SessionProcesses &processes() const { return m_processes; }

    [[nodiscard]] const Input &input() const { return m_input; }
    [[nodiscard]] const Windows &windows() const { return m_windows; }
    [[nodiscard]] Screen &screen() { return m_screen; }
    [[nodiscard]] const XConnection &connection() const { return m_connection; }
    /// Only with SessionOptions::sessionBus.
    [[nodiscard]] const Bus &bus() const { return *m_bus; }
    /// What the bus and the programs that it started have written. Only with SessionOptions::sessionBus.
    [[nodiscard]] const QStringList &busLines() const { return m_busDaemon->lines(); }
    /// Only with SessionOptions::accessibility.
    [[nodiscard]] const Accessibility &accessibility() const { return *m_accessibility; }

    /// Returns when the window manager has taken over the screen. At most one runs.
    void startWindowManager(WindowManager windowManager);
    /// Kills the window manager, as a crash would.
    void stopWindowManager();
    /// Returns when picom has taken over the screen. At most one runs.
    void startCompositor();
    void stopCompositor();

private:
    void usePrefix(const QString &prefix);
    void setMonitors(const QList<QRect> &monitors);
    [[nodiscard]] bool isComposited() const;

    // Destroyed last to first: connections, programs, whatever else runs, the server, the folders.
    SessionFolders m_folders;
    QProcessEnvironment m_environment;
    XServer m_server;
    SessionProcesses m_processes;
    std::unique_ptr<Program> m_busDaemon;
    std::unique_ptr<Program> m_windowManager;
    std::unique_ptr<Program> m_compositor;
    std::vector<std::unique_ptr<Program>> m_programs;
    XConnection m_connection;
    Input m_input{m_connection};
    Windows m_windows{m_connection};
    Screen m_screen{m_connection};
    std::unique_ptr<Bus> m_bus;
    std::unique_ptr<Accessibility> m_accessibility;
};

} // namespace Orbita

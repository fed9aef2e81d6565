#pragma once

#include "desktop/harness/Input.h"
#include "desktop/harness/Wait.h"
#include "desktop/harness/Windows.h"

#include <QTimer>

namespace Orbita {

/// A virtual X server of a test's own, with openbox on demand.
class VirtualDisplay {
public:
    VirtualDisplay();

    [[nodiscard]] const QByteArray &name() const { return m_server.display(); }
    [[nodiscard]] Program start(const QString &program, const QStringList &arguments = {}) const;
    /// Does not wait until it manages windows.
    void startWindowManager();
    /// As a crash would end it.
    void killWindowManager() { m_windowManager.reset(); }
    void kill() { m_server.program().kill(); }

private:
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    XServer m_server{{1280, 800}, m_environment};
    std::unique_ptr<Program> m_windowManager;
};

/// How a window of another program presents itself. What is empty or 0 is not said.
struct ForeignWindow {
    QByteArray windowClass{};
    QByteArray title{};
    qint64 process = 0;
    QByteArray machine{};
    QByteArray type{};
    QByteArray state{};
    xcb_window_t parent = XCB_NONE; ///< that it is transient for
};

/// Another program on the display.
class ForeignClient {
public:
    explicit ForeignClient(const QByteArray &display);

    xcb_window_t show(const ForeignWindow &window) const;
    void withdraw(xcb_window_t window) const;
    void destroy(xcb_window_t window) const;
    void setAtom(xcb_window_t window, const QByteArray &property, const QByteArray &atom) const;

    /// Takes the pointer for itself alone, as a menu does.
    [[nodiscard]] bool grabPointer() const;
    /// Swaps the left and the right mouse button, as for a left-handed user.
    void swapButtons() const;
    /// Takes the selection that stands for a compositor and returns the window that holds it.
    [[nodiscard]] xcb_window_t claimCompositing() const;

    const XConnection connection;
    const Input input{connection};
    const Windows windows{connection};

private:
    QTimer m_nudge; ///< openbox now and then leaves a request lying until the next event comes
};

} // namespace Orbita

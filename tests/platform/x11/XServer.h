#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

namespace Orbita {

/// A virtual X server of a test's own, with a window manager on demand. Both end with it.
class XServer {
public:
    XServer();
    ~XServer();

    [[nodiscard]] const QByteArray &display() const { return m_display; }

    /// Does not wait until it manages windows.
    void startWindowManager();
    /// As a crash would end it.
    void killWindowManager() { kill(m_windowManager); }
    void kill() { kill(m_server); }

    /// Starts \a command with this server as its display.
    void start(QProcess &process, const QStringList &command) const;

private:
    static void kill(QProcess &process);

    QProcess m_server;
    QProcess m_windowManager;
    QByteArray m_display;
};

} // namespace Orbita

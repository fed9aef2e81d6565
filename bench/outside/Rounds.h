#pragma once

#include "WindowWatch.h"

#include "desktop/harness/Input.h"

#include <QJsonObject>
#include <QString>

#include <vector>

namespace Orbita {

/// How a window is made to come or to go: "key:CHORD" presses keys, "exec:COMMAND" runs a program without a shell,
/// "end" asks the window's process to end. Prepared beforehand, so that pulling it costs next to nothing.
class Trigger {
public:
    /// Throws DesktopFailure when \a text is none of these.
    Trigger(const Input &input, const QString &text);

    void pull(qint64 pid);
    /// Lets go of keys that are held.
    void release() const;

private:
    const Input &m_input;
    QList<quint8> m_keys;
    QList<QByteArray> m_command;
};

/// A window to be measured.
struct Target {
    QString className;
    QString show; ///< as Trigger takes it
    QString dismiss;
};

struct RoundOptions {
    int rounds = 20;
    int warmUp = 1;                      ///< rounds that come first and are not counted
    std::chrono::milliseconds rest{150}; ///< between the end of a round and the next trigger
    bool cold = false;                   ///< whether the window's process must have ended before the next round
    bool leave = false;                  ///< whether the last round's windows stay
};

/// Shows and dismisses one target over and over.
class Rounds {
public:
    Rounds(const QByteArray &display, Target target, const RoundOptions &options);

    /// One round, counted or not. \a last leaves the window standing if the options say so.
    void run(bool counted, bool last);

    [[nodiscard]] const Target &target() const { return m_target; }
    /// Counted rounds in which the window did not come, was not painted, or did not go.
    [[nodiscard]] int failures() const { return m_failures; }
    /// Smallest, median and largest of "map", "paint", "screen" and "gone" in milliseconds, and the process.
    [[nodiscard]] QJsonObject result() const;

private:
    [[nodiscard]] bool dismiss(std::vector<double> &times);

    XConnection m_connection;
    Input m_input{m_connection};
    WindowWatch m_watch;
    Target m_target;
    Trigger m_show;
    Trigger m_dismiss;
    RoundOptions m_options;
    int m_failures = 0;
    std::vector<double> m_map;
    std::vector<double> m_paint;
    std::vector<double> m_screen;
    std::vector<double> m_gone;
};

} // namespace Orbita

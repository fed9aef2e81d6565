#pragma once

#include <QObject>
#include <QString>

namespace Orbita {

/// Runs scripts, each in a process of its own.
class ScriptRunner : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Starts \a script. The user is told, by the runner or by the script's process, when it fails.
    virtual void run(const QString &script) = 0;
    /// Asks all scripts to end, and ends those that do not.
    virtual void stopAll() = 0;
    [[nodiscard]] virtual int runningCount() const = 0;

Q_SIGNALS:
    /// A script has started, or ended, or could not be started: runningCount() is another.
    void runningCountChanged();
};

} // namespace Orbita

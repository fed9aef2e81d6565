#pragma once

#include "platform/Image.h"

#include <QObject>
#include <QString>

#include <optional>
#include <vector>

namespace Orbita {

enum class ActivationPolicy {
    Regular,   ///< has a window that a task list would show
    Accessory, ///< runs, but shows no such window, or is this program itself
};

/// One application that runs: a record per application, not per window or process.
/// Two records are equal when they stand for the same run of the same application.
struct RunningApplication {
    quint64 serial = 0;           ///< unique per record for the lifetime of the service, never 0
    QString bundlePath;           ///< the ".desktop" file, AppImage or ".app" folder; empty when none was found
    QString executablePath;       ///< what its (oldest) process runs; empty when unknown
    QString bundleIdentifier;     ///< the desktop file id without ".desktop", else the window class; may be empty
    QString localizedName;        ///< never empty
    qint64 processIdentifier = 0; ///< the (oldest) process; 0 when unknown
    ActivationPolicy activationPolicy = ActivationPolicy::Accessory;
    Image icon; ///< null when none is known

    friend bool operator==(const RunningApplication &a, const RunningApplication &b) { return a.serial == b.serial; }
};

/// The applications that run on this display.
class RunningApplications : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// In the order in which they appeared.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() const = 0;
    /// The application that has the keyboard, this program excepted; nothing when none has.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() const = 0;
    /// Brings \a application's most recent window to the front with the keyboard, from another workspace or
    /// minimised too. False when it has ended or has no window.
    virtual bool activate(const RunningApplication &application) = 0;
    /// Whether \a application has ended.
    [[nodiscard]] virtual bool isTerminated(const RunningApplication &application) const = 0;

Q_SIGNALS:
    /// Applications started or ended, or a record changed (a name, an icon, the policy).
    void runningApplicationsChanged();
    void frontmostApplicationChanged();
};

} // namespace Orbita

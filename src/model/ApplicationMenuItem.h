#pragma once

#include "model/MenuItem.h"
#include "platform/RunningApplications.h"

namespace Orbita {

/// What the entries that stand for an application have in common: running, quitting, coming forward.
class ApplicationMenuItem : public MenuItem {
public:
    [[nodiscard]] bool isRunning() const override;
    [[nodiscard]] bool canQuit() const override { return isRunning(); }
    /// Asks the companion to end the first running application that this item represents.
    void quit() override;

protected:
    explicit ApplicationMenuItem(ItemServices &services) : m_services(services) {}

    /// The first running application, in the desktop's order, that this item represents.
    [[nodiscard]] std::optional<RunningApplication> runningApplication() const;
    /// Brings the running application forward. False when it does not run or cannot come.
    bool activateRunning();
    /// The same, or launches the one at \a path. A failure is logged.
    void activateOrLaunch(const QString &path);
    /// Opens the file at \a path with the application at \a applicationPath. A failure is logged.
    void openFile(const QString &path, const QString &applicationPath);

    ItemServices &m_services;
};

/// Whether the program at \a executablePath belongs to the application bundle at \a bundlePath itself, and not to
/// another application nested inside it.
[[nodiscard]] bool bundleHoldsExecutable(const QString &bundlePath, const QString &executablePath);

} // namespace Orbita

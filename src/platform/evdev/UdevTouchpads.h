#pragma once

#include <QObject>
#include <QStringList>

#include <memory>

class QSocketNotifier;
struct udev;
struct udev_monitor;

namespace Orbita {

struct UdevDeleter {
    void operator()(udev *context) const;
    void operator()(udev_monitor *monitor) const;
};

/// The event nodes of the machine's touchpads, such as "/dev/input/event5", by what udev says. Opens none of them.
class UdevTouchpads final : public QObject {
    Q_OBJECT
public:
    explicit UdevTouchpads(QObject *parent = nullptr);
    ~UdevTouchpads() override;

    /// Those that are there now; asks afresh.
    [[nodiscard]] QStringList nodes() const;

    /// Tells of those that come and go from now on. False when udev cannot be reached.
    [[nodiscard]] bool watch();
    void stopWatching();

Q_SIGNALS:
    /// There is a touchpad, or something about it has changed, such as who may read it.
    void appeared(const QString &node);
    void vanished(const QString &node);

private:
    void receive();

    std::unique_ptr<udev, UdevDeleter> m_udev; ///< nothing where udev cannot be reached
    std::unique_ptr<udev_monitor, UdevDeleter> m_monitor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace Orbita

#pragma once

#include "platform/UserNotifications.h"

#include <QObject>

namespace Orbita {

/// Messages shown by the desktop's notification server (D-Bus interface org.freedesktop.Notifications).
class FreedesktopNotifications final : public QObject, public UserNotifications {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Where no server runs and none can be started, it is also shown by the next one that comes.
    void notify(const QString &title, const QString &text) override;

private:
    void notifyLater(const QString &title, const QString &text);
};

} // namespace Orbita

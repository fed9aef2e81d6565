#pragma once

#include "platform/UserNotifications.h"

#include <QObject>

namespace Orbita {

/// Messages shown by the desktop's notification server (D-Bus interface org.freedesktop.Notifications).
class FreedesktopNotifications final : public QObject, public UserNotifications {
    Q_OBJECT
public:
    using QObject::QObject;

    void notify(const QString &title, const QString &text) override;
};

} // namespace Orbita

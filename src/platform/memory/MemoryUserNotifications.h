#pragma once

#include "platform/UserNotifications.h"

#include <QList>

namespace Orbita {

/// Keeps the messages that a desktop would have shown.
class MemoryUserNotifications final : public UserNotifications {
public:
    struct Notification {
        QString title;
        QString text;

        friend bool operator==(const Notification &, const Notification &) = default;
    };

    void notify(const QString &title, const QString &text) override { notifications.append({title, text}); }

    QList<Notification> notifications; ///< the oldest first
};

} // namespace Orbita

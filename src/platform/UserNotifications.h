#pragma once

#include <QString>

namespace Orbita {

/// Short messages that the desktop shows to the user.
class UserNotifications {
public:
    virtual ~UserNotifications() = default;

    /// Shows \a title above \a text, both plain. Does not wait. Where the desktop shows no messages, \a text is logged.
    virtual void notify(const QString &title, const QString &text) = 0;
};

} // namespace Orbita

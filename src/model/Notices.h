#pragma once

#include <QSet>
#include <QString>

namespace Orbita {

class UserNotifications;

/// What the user is told about the entries.
class Notices {
public:
    /// \a notifications outlives the object.
    explicit Notices(UserNotifications &notifications) : m_notifications(notifications) {}

    /// Shows \a title above \a text, both plain.
    void tell(const QString &title, const QString &text);
    /// The same, but each text once in a run of the program: what is found again at each showing of the ring.
    void tellOnce(const QString &title, const QString &text);

private:
    UserNotifications &m_notifications;
    QSet<QString> m_told;
};

} // namespace Orbita

#pragma once

#include "desktop/harness/Bus.h"

#include <QList>
#include <QRect>
#include <QString>

#include <optional>

namespace Orbita {

/// States of an accessible object. Source of the numbers: AtspiStateType in atspi-constants.h.
enum class AccessibleState : quint8 { Enabled = 8, Focused = 12 };

/// An object as assistive technology saw it, with all below it.
struct AccessibleItem {
    QString service; ///< the program's unique name on the accessibility bus
    QString path;
    QString role; ///< for instance "push button"
    QString name;
    QRect extents; ///< in pixels of the whole screen; null if it has none
    quint64 states = 0;
    QList<AccessibleItem> children;

    [[nodiscard]] bool has(AccessibleState state) const { return ((states >> static_cast<quint8>(state)) & 1) != 0; }
    /// This object and all below it that have \a role, in reading order; any role if it is empty.
    [[nodiscard]] QList<AccessibleItem> withRole(const QString &role) const;
    /// The first of withRole that is called \a name.
    [[nodiscard]] std::optional<AccessibleItem> find(const QString &role, const QString &name) const;
};

/// The session's programs as a screen reader perceives and operates them.
/// Must exist before a program that is to be seen starts.
class Accessibility {
public:
    /// Starts the accessibility services of the session bus \a session.
    explicit Accessibility(const Bus &session);

    /// The present tree of the program called \a application; nothing while it is not registered.
    [[nodiscard]] std::optional<AccessibleItem> tree(const QString &application) const;
    /// Waits until \a application has an object with \a role and \a name.
    AccessibleItem waitFor(const QString &application, const QString &role, const QString &name) const;
    /// Does what is called \a action, such as "Press". Throws DesktopFailure when \a item does not offer it.
    void doAction(const AccessibleItem &item, const QString &action) const;
    void press(const AccessibleItem &item) const { doAction(item, QStringLiteral("Press")); }

private:
    [[nodiscard]] AccessibleItem read(const QString &service, const QString &path, int depth) const;

    Bus m_bus;
};

} // namespace Orbita

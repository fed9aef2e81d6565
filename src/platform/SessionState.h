#pragma once

#include <QObject>

namespace Orbita {

/// Whether the user of this session sits before it.
class SessionState : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    enum class State {
        Active,       ///< Also as long as nothing is known.
        Locked,       ///< A screen locker or a screen saver stands before it.
        InBackground, ///< The screen shows another session, which may be another user's.
    };
    [[nodiscard]] virtual State state() const = 0;
    /// Whether anything may be shown.
    [[nodiscard]] bool isUsable() const { return state() == State::Active; }

Q_SIGNALS:
    /// The state is another one now.
    void changed();
};

} // namespace Orbita

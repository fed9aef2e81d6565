#pragma once

#include <QObject>

namespace Orbita {

/// Whether this user may watch the touchpads.
class InputAccess : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    enum class Touchpads {
        None,    ///< There are none to watch.
        Trusted, ///< At least one can be read.
        Refused, ///< There are some, and none can be read.
    };
    /// Looks afresh.
    [[nodiscard]] virtual Touchpads touchpads() const = 0;

Q_SIGNALS:
    /// A touchpad came or went.
    void changed();
};

} // namespace Orbita

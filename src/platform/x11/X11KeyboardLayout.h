#pragma once

#include "platform/KeyboardLayout.h"

#include <QTimer>

#include <array>
#include <memory>

namespace Orbita {

class X11Connection;

/// Reads the server's keymap through xkbcommon, at the first question and at the first one after each change.
class X11KeyboardLayout final : public KeyboardLayout {
    Q_OBJECT
public:
    explicit X11KeyboardLayout(X11Connection &connection, QObject *parent = nullptr);

    [[nodiscard]] QString text(quint16 virtualKeyCode) const override;

private:
    using Texts = std::array<QString, 128>; ///< by virtual key code

    /// None stands on any key when the server cannot be asked.
    [[nodiscard]] Texts read() const;
    void forget();

    X11Connection &m_connection;
    mutable std::unique_ptr<Texts> m_texts; ///< null when they have to be read
    QTimer m_settles;
};

} // namespace Orbita

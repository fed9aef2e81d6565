#pragma once

#include <QObject>

namespace Orbita {

class X11Connection;

/// Whether a compositing manager blends the windows of the screen, followed live.
class X11Compositor : public QObject {
    Q_OBJECT
public:
    explicit X11Compositor(X11Connection &connection, QObject *parent = nullptr);

    [[nodiscard]] bool isPresent() const { return m_present; }

Q_SIGNALS:
    void presentChanged(bool present);

private:
    void setPresent(bool present);

    bool m_present = false;
};

} // namespace Orbita

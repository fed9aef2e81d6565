#pragma once

#include "platform/EventTap.h"

#include <QTimer>

namespace Orbita {

class X11RawInput;

/// What the taps of the pointer share: each listens to one kind of raw event.
template <typename Tap>
class X11EventTap : public Tap {
public:
    ~X11EventTap() override;

    [[nodiscard]] bool isEnabled() const override { return m_enabled; }
    bool setEnabled(bool enabled) override;

protected:
    /// Disabled at first. \a input is borrowed; \a mask is one XCB_INPUT_XI_EVENT_MASK_RAW_...
    X11EventTap(X11RawInput &input, quint32 mask, QObject *parent);

    X11RawInput &m_input;
    const quint32 m_mask;

private:
    bool m_enabled = false;
};

class X11MouseUpEventTap final : public X11EventTap<MouseUpEventTap> {
    Q_OBJECT
public:
    explicit X11MouseUpEventTap(X11RawInput &input, QObject *parent = nullptr);
};

class X11OtherMouseDownEventTap final : public X11EventTap<OtherMouseDownEventTap> {
    Q_OBJECT
public:
    explicit X11OtherMouseDownEventTap(X11RawInput &input, QObject *parent = nullptr);
};

/// While it pauses, the server sends no movements at all, so that a fast mouse does not wake the program.
class X11MouseMovedEventTap final : public X11EventTap<MouseMovedEventTap> {
    Q_OBJECT
public:
    explicit X11MouseMovedEventTap(X11RawInput &input, QObject *parent = nullptr);

    bool setEnabled(bool enabled) override;
    void pause(std::chrono::milliseconds duration) override;

private:
    QTimer m_pause;
};

} // namespace Orbita

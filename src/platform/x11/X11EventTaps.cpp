#include "platform/x11/X11EventTaps.h"

#include "platform/x11/X11RawInput.h"

#include <xcb/xinput.h>

#include <optional>

namespace Orbita {

namespace {

/// The number of the button that the X server calls \a button; nothing for the left and the right one and for those
/// that stand for the directions of wheels.
std::optional<int> otherButtonNumber(quint32 button)
{
    constexpr quint32 firstAfterWheels = 8;
    if (button == XCB_BUTTON_INDEX_2)
        return 2;
    if (button >= firstAfterWheels)
        return int(button - firstAfterWheels) + 3;
    return {};
}

} // namespace

template <typename Tap>
X11EventTap<Tap>::X11EventTap(X11RawInput &input, quint32 mask, QObject *parent)
    : Tap(parent), m_input(input), m_mask(mask)
{
    QObject::connect(&input, &X11RawInput::lost, this, [this] { m_enabled = false; });
}

template <typename Tap>
X11EventTap<Tap>::~X11EventTap()
{
    X11EventTap::setEnabled(false);
}

template <typename Tap>
bool X11EventTap<Tap>::setEnabled(bool enabled)
{
    if (enabled && !m_enabled)
        m_enabled = m_input.listen(m_mask);
    else if (!enabled && m_enabled) {
        m_enabled = false;
        m_input.ignore(m_mask);
    }
    return m_enabled == enabled;
}

template class X11EventTap<MouseUpEventTap>;
template class X11EventTap<OtherMouseDownEventTap>;
template class X11EventTap<MouseMovedEventTap>;

X11MouseUpEventTap::X11MouseUpEventTap(X11RawInput &input, QObject *parent)
    : X11EventTap(input, XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE, parent)
{
    connect(&input, &X11RawInput::buttonReleased, this, [this](quint32 button) {
        if (isEnabled() && button == XCB_BUTTON_INDEX_1)
            Q_EMIT mouseUp();
    });
}

X11OtherMouseDownEventTap::X11OtherMouseDownEventTap(X11RawInput &input, QObject *parent)
    : X11EventTap(input, XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS, parent)
{
    connect(&input, &X11RawInput::buttonPressed, this, [this](quint32 button) {
        if (const auto number = otherButtonNumber(button); isEnabled() && number)
            Q_EMIT otherMouseDown(*number);
    });
}

X11MouseMovedEventTap::X11MouseMovedEventTap(X11RawInput &input, QObject *parent)
    : X11EventTap(input, XCB_INPUT_XI_EVENT_MASK_RAW_MOTION, parent)
{
    m_pause.setSingleShot(true);
    m_pause.setTimerType(Qt::PreciseTimer);
    connect(&input, &X11RawInput::moved, this, [this] {
        // Some may still come in the pause: those that the server had sent before it was told.
        if (isEnabled() && !m_pause.isActive())
            Q_EMIT mouseMoved();
    });
    connect(&m_pause, &QTimer::timeout, this, [this] { m_input.resume(m_mask); });
    connect(&input, &X11RawInput::lost, &m_pause, &QTimer::stop);
}

bool X11MouseMovedEventTap::setEnabled(bool enabled)
{
    if (!enabled)
        m_pause.stop();
    return X11EventTap::setEnabled(enabled);
}

void X11MouseMovedEventTap::pause(std::chrono::milliseconds duration)
{
    if (!isEnabled())
        return;
    m_input.ignore(m_mask);
    m_pause.start(duration);
}

} // namespace Orbita

#include "platform/evdev/RecordedTouchEventTap.h"

#include <linux/input.h>

namespace Orbita {

namespace {

/// So many events are played at once at most, so that a recording without times does not block the event loop.
constexpr std::size_t atOnce = 4096;

} // namespace

RecordedTouchEventTap::RecordedTouchEventTap(TouchRecording recording, QObject *parent)
    : TouchEventTap(parent), m_recording(std::move(recording)), m_decoder(m_recording.axes, nextTouchpadNumber())
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &RecordedTouchEventTap::play);
}

bool RecordedTouchEventTap::setEnabled(bool enabled)
{
    m_enabled = enabled;
    if (enabled && !m_clock.isValid()) {
        m_clock.start();
        m_timer.start(0);
    }
    return true;
}

void RecordedTouchEventTap::play()
{
    const auto &events = m_recording.events;
    const std::chrono::nanoseconds now(m_clock.nsecsElapsed());
    const std::size_t end = std::min(events.size(), m_next + atOnce);
    while (m_next < end && events[m_next].due <= now)
        take(events[m_next++]);
    if (m_next < events.size()) {
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(events[m_next].due - now);
        m_timer.start(std::max(rest, std::chrono::milliseconds::zero()));
        return;
    }
    if (m_decoder.liftAll())
        tell();
    Q_EMIT finished();
}

void RecordedTouchEventTap::take(const TouchRecording::Event &event)
{
    // What was dropped is nowhere to be had: better no fingers than ones that were lifted long ago.
    const bool wasDropped = event.type == EV_SYN && event.code == SYN_DROPPED;
    if (wasDropped ? m_decoder.liftAll() : m_decoder.take(event.type, event.code, event.value))
        tell();
}

void RecordedTouchEventTap::tell()
{
    if (m_enabled)
        Q_EMIT gesture(m_decoder.touching());
    if (m_enabled && m_decoder.hasMagnified())
        Q_EMIT magnify();
}

} // namespace Orbita

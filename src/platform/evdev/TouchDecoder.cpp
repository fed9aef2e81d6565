#include "platform/evdev/TouchDecoder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include <linux/input.h>

namespace Orbita {

namespace {

constexpr int mostTools = 5; ///< there are tool keys for one to five fingers

/// Of the kernel's tracking ids, which are not negative, none has this bit.
constexpr quint32 fingerWithoutPlace = 0x80000000;

constexpr float magnifyingChange = 0.1F;

/// Where in \a range \a value is: 0 at its minimum and 1 at its maximum.
double normalized(qint32 value, TouchpadAxes::Range range)
{
    const double inside = std::clamp(value, range.minimum, range.maximum);
    return (inside - range.minimum) / (double(range.maximum) - range.minimum);
}

int fingersOfTool(quint16 code)
{
    switch (code) {
    case BTN_TOOL_DOUBLETAP:
        return 2;
    case BTN_TOOL_TRIPLETAP:
        return 3;
    case BTN_TOOL_QUADTAP:
        return 4;
    case BTN_TOOL_QUINTTAP:
        return 5;
    default:
        return 0; // a single finger counts by its place alone, for the key is down while it hovers, too
    }
}

} // namespace

bool TouchpadAxes::areThoseOfATouchpad() const
{
    return x.maximum > x.minimum && y.maximum > y.minimum && contacts > 0;
}

quint32 nextTouchpadNumber()
{
    static quint32 last = 0;
    return ++last;
}

TouchDecoder::TouchDecoder(const TouchpadAxes &axes, quint32 touchpadNumber)
    : m_axes(axes), m_touchpadNumber(touchpadNumber)
{
    Q_ASSERT(axes.areThoseOfATouchpad());
    m_axes.contacts = std::min(axes.contacts, maximumContacts);
    m_touching.reserve(m_axes.contacts + mostTools);
}

bool TouchDecoder::take(quint16 type, quint16 code, qint32 value)
{
    switch (type) {
    case EV_ABS:
        takeAxis(code, value);
        return false;
    case EV_KEY:
        takeKey(code, value != 0);
        return false;
    case EV_SYN:
        m_resynchronising |= code == SYN_DROPPED;
        return code == SYN_REPORT && !m_resynchronising && completeFrame();
    case EV_MSC:
        // A pad that stamps its frames tells of fingers that lie still, too, when nothing else of them is to be told.
        m_isNews |= code == MSC_TIMESTAMP;
        return false;
    default:
        return false;
    }
}

bool TouchDecoder::resynchronised()
{
    m_resynchronising = false;
    return completeFrame();
}

bool TouchDecoder::liftAll()
{
    for (Contact &contact : contacts())
        contact.trackingId = -1;
    m_tools = 0;
    m_isNews = true;
    return resynchronised();
}

std::span<TouchDecoder::Contact> TouchDecoder::contacts()
{
    return std::span(m_contacts).first(std::size_t(m_axes.contacts));
}

void TouchDecoder::takeAxis(quint16 code, qint32 value)
{
    if (code == ABS_MT_SLOT) {
        m_current = value;
        return;
    }
    if (code < ABS_MT_SLOT || code > ABS_MAX || m_current < 0 || m_current >= m_axes.contacts)
        return;
    // Place and tool outlast the finger: the kernel does not repeat them when the next one is at the same place.
    Contact &contact = m_contacts[std::size_t(m_current)];
    m_isNews = true;
    if (code == ABS_MT_POSITION_X) {
        contact.x = value;
    } else if (code == ABS_MT_POSITION_Y) {
        contact.y = value;
    } else if (code == ABS_MT_TOOL_TYPE) {
        contact.isPalm = value == MT_TOOL_PALM;
    } else if (code == ABS_MT_TRACKING_ID) {
        contact.trackingId = value;
        contact.touchDown = ++m_touchDowns;
    }
}

void TouchDecoder::takeKey(quint16 code, bool isDown)
{
    const int fingers = fingersOfTool(code);
    if (fingers == 0)
        return;
    const quint32 bit = 1U << fingers;
    m_tools = isDown ? m_tools | bit : m_tools & ~bit;
    m_isNews = true;
}

int TouchDecoder::countOfTools() const
{
    return m_tools == 0 ? 0 : std::bit_width(m_tools) - 1;
}

bool TouchDecoder::completeFrame()
{
    if (!std::exchange(m_isNews, false))
        return false;
    const bool wasTouched = !m_touching.isEmpty();
    collectTouching();
    updateSpread();
    return wasTouched || !m_touching.isEmpty();
}

void TouchDecoder::collectTouching()
{
    const qsizetype before = m_touching.size();
    m_sameFingers = true;
    qsizetype count = 0;
    int felt = 0; // palms, too: the tool keys count them
    quint64 latest = 0;
    for (const Contact &contact : contacts()) {
        if (contact.trackingId < 0)
            continue;
        ++felt;
        if (contact.isPalm)
            continue;
        const QPointF place = placeOf(contact);
        if (contact.touchDown > latest) {
            latest = contact.touchDown;
            m_lastPlace = place;
        }
        tell(count++, {identity(quint32(contact.trackingId)), place});
    }
    for (int extra = 0; extra < countOfTools() - felt; ++extra)
        tell(count++, {identity(fingerWithoutPlace | quint32(extra)), m_lastPlace});
    m_touching.resize(count);
    m_sameFingers &= count == before;
}

void TouchDecoder::tell(qsizetype index, const Touch &touch)
{
    if (index == m_touching.size()) {
        m_sameFingers = false;
        m_touching.append(touch);
        return;
    }
    m_sameFingers &= m_touching[index].identity == touch.identity;
    m_touching[index] = touch;
}

void TouchDecoder::updateSpread()
{
    m_magnified = false;
    if (m_touching.size() < 2) {
        m_startSpread = 0;
        return;
    }
    const float now = spread(m_touching);
    const bool isStart = !m_sameFingers || m_startSpread == 0;
    m_magnified = !isStart && std::abs(now - m_startSpread) > magnifyingChange * m_startSpread;
    if (isStart || m_magnified)
        m_startSpread = now;
}

QPointF TouchDecoder::placeOf(const Contact &contact) const
{
    return {normalized(contact.x, m_axes.x), 1 - normalized(contact.y, m_axes.y)};
}

quint64 TouchDecoder::identity(quint32 finger) const
{
    return quint64(m_touchpadNumber) << 32 | finger;
}

} // namespace Orbita

#pragma once

#include "platform/Touch.h"

#include <QtGlobal>

#include <array>
#include <span>

namespace Orbita {

/// What a touchpad says of itself, in the device's own units.
struct TouchpadAxes {
    struct Range {
        qint32 minimum = 0;
        qint32 maximum = 0;
    };
    Range x;             ///< from left to right
    Range y;             ///< from the far edge to the near one
    qint32 contacts = 0; ///< how many fingers it can tell the places of

    /// Both axes have a length, and there is a place for one finger at least.
    [[nodiscard]] bool areThoseOfATouchpad() const;
};

/// A number that no other device or recording of this process has.
[[nodiscard]] quint32 nextTouchpadNumber();

/// Makes touching fingers of the events of one touchpad that follow the kernel's multi-touch protocol B
/// (Documentation/input/multi-touch-protocol.rst). Knows neither a device nor a clock, and allocates nothing after it
/// was made.
///
/// A pad that feels more fingers than it can tell the places of counts them by its tool keys; the ones without a place
/// of their own are where the finger is that touched last. Palms are left out. Contacts beyond \c maximumContacts are
/// ignored.
class TouchDecoder {
public:
    static constexpr qint32 maximumContacts = 64;

    /// \a axes are those of a touchpad. \a touchpadNumber makes the identities of its fingers unique.
    TouchDecoder(const TouchpadAxes &axes, quint32 touchpadNumber);

    /// Takes one event in. True when it completed a frame that is worth telling: touching() and hasMagnified() are its.
    ///
    /// After an event that says that others were dropped, no frame is complete until resynchronised().
    [[nodiscard]] bool take(quint16 type, quint16 code, qint32 value);
    /// Everything that was dropped has been made up for. True as for take().
    [[nodiscard]] bool resynchronised();
    /// All fingers are up, as far as anybody knows. True as for take().
    [[nodiscard]] bool liftAll();

    /// The fingers of the last complete frame.
    [[nodiscard]] const Touches &touching() const { return m_touching; }
    /// Whether the fingers moved apart or together in the last complete frame, by more than a tenth of what their
    /// spread was when this was last true or a finger last came or went.
    [[nodiscard]] bool hasMagnified() const { return m_magnified; }

private:
    struct Contact {
        qint32 trackingId = -1; ///< negative while nothing touches
        qint32 x = 0;
        qint32 y = 0;
        bool isPalm = false;
        quint64 touchDown = 0; ///< greater than those of all that touched before
    };

    [[nodiscard]] std::span<Contact> contacts();
    void takeAxis(quint16 code, qint32 value);
    void takeKey(quint16 code, bool isDown);
    bool completeFrame();
    void collectTouching();
    void updateSpread();
    [[nodiscard]] QPointF placeOf(const Contact &contact) const;
    [[nodiscard]] quint64 identity(quint32 finger) const;
    void tell(qsizetype index, const Touch &touch);
    [[nodiscard]] int countOfTools() const;

    TouchpadAxes m_axes;
    quint32 m_touchpadNumber;
    std::array<Contact, maximumContacts> m_contacts; ///< only the first m_axes.contacts are in use
    qint32 m_current = 0; ///< index of the contact that events are about; may be out of range
    quint64 m_touchDowns = 0;
    quint32 m_tools = 0; ///< bit n is set while the key for n fingers is down
    QPointF m_lastPlace{0.5, 0.5};
    bool m_isNews = false; ///< anything about touching came since the last complete frame
    bool m_resynchronising = false;

    Touches m_touching;
    bool m_sameFingers = false; ///< as in the frame before
    float m_startSpread = 0;
    bool m_magnified = false;
};

} // namespace Orbita

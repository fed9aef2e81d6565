#pragma once

#include "base/ItemAddress.h"

#include <chrono>
#include <optional>

namespace Orbita {

/// A key that reached a ring.
struct RingKey {
    std::optional<quint16> code;    ///< as KeyCodes numbers them; nothing for a key it does not know
    std::chrono::milliseconds time; ///< on any clock that only goes forwards
    bool areButtonsUp = true;       ///< no mouse button is pressed
};

/// What the ring shows when the key arrives.
struct RingKeyContext {
    qint64 itemCount = 0;
    qint64 highlightedPosition = NotFound;             ///< NotFound when nothing is highlighted
    std::optional<std::chrono::milliseconds> lastTime; ///< when the last key was accepted
};

struct RingKeyPlan {
    enum class Action {
        PassOn,    ///< not for the ring: the key goes its usual way
        Swallow,   ///< nothing, and nobody else gets the key
        Hide,      ///< close the ring and give the keyboard back
        Highlight, ///< highlight position
        Click,     ///< as a click on position
    };
    Action action = Action::PassOn;
    qint64 position = NotFound;
    std::optional<std::chrono::milliseconds> lastTime; ///< the context's lastTime from now on

    friend bool operator==(const RingKeyPlan &, const RingKeyPlan &) = default;
};

/// Keys that follow an accepted one within this time do nothing, so that a held key does not race round the ring.
inline constexpr std::chrono::milliseconds keyRepeatGuard{200};

/// Decides what \a key does. Escape hides and always works; the first other key highlights the first item, modifiers
/// alone excepted; the arrows go round; Return clicks. Pure: the caller keeps the plan's lastTime.
[[nodiscard]] RingKeyPlan planRingKey(const RingKey &key, const RingKeyContext &context);

} // namespace Orbita

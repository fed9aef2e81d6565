#include "control/KeyNavigation.h"

#include "platform/KeyCodes.h"

namespace Orbita {

namespace {

/// Command, Shift, Caps Lock, Option, Control and Function, left and right. They say how other keys are meant.
bool isModifier(std::optional<quint16> code)
{
    return code && *code >= 54 && *code <= 63;
}

} // namespace

RingKeyPlan planRingKey(const RingKey &key, const RingKeyContext &context)
{
    using Action = RingKeyPlan::Action;
    if (!key.areButtonsUp || context.itemCount == 0 || isModifier(key.code))
        return {Action::PassOn, NotFound, context.lastTime};
    if (key.code == KeyCodes::Escape)
        return {Action::Hide, NotFound, context.lastTime};
    if (context.lastTime && key.time - *context.lastTime <= keyRepeatGuard)
        return {Action::Swallow, NotFound, context.lastTime};

    const qint64 current = context.highlightedPosition;
    if (current == NotFound)
        return {Action::Highlight, 0, key.time};
    if (key.code == KeyCodes::LeftArrow)
        return {Action::Highlight, current > 0 ? current - 1 : context.itemCount - 1, key.time};
    if (key.code == KeyCodes::RightArrow)
        return {Action::Highlight, current + 1 < context.itemCount ? current + 1 : 0, key.time};
    if (key.code == KeyCodes::Return)
        return {Action::Click, current, key.time};
    return {Action::Swallow, NotFound, key.time};
}

} // namespace Orbita

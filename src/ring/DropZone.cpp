#include "ring/DropZone.h"

namespace Orbita {

ItemAddress DropTarget::insertion() const
{
    if (zone == DropZone::Onto)
        return {};
    return {item.section, item.position + (zone == DropZone::After ? 1 : 0)};
}

std::optional<DropZone> dropZoneAt(double fraction, bool canDropOnto)
{
    const double beforeEnds = canDropOnto ? 0.25 : 0.5;
    const double afterBegins = canDropOnto ? 0.75 : 0.5;
    if (fraction > 0.0 && fraction < beforeEnds)
        return DropZone::Before;
    if (fraction > beforeEnds && fraction < afterBegins)
        return DropZone::Onto;
    if (fraction > afterBegins && fraction < 1.0)
        return DropZone::After;
    return std::nullopt;
}

std::optional<DropTarget> dropTargetAt(const RingLayout &layout, double angle,
                                       const std::function<bool(ItemAddress)> &canDropOnto)
{
    const std::optional<ArcHit> hit = arcAt(layout, angle, ArcEnd::Excluded);
    if (!hit)
        return std::nullopt;
    const std::optional<DropZone> zone = dropZoneAt(hit->fraction, canDropOnto(hit->item));
    return zone ? std::optional(DropTarget{hit->item, *zone}) : std::nullopt;
}

std::optional<ArcHit> arcAt(const RingLayout &layout, double angle, ArcEnd end)
{
    const double relative = layout.angleFromStart(angle);
    std::optional<ArcHit> hit;
    layout.visitArcs([&](ItemAddress item, RingArc arc) {
        const bool isBeforeEnd = relative < arc.end() || (end == ArcEnd::Included && relative == arc.end());
        if (relative > arc.start && isBeforeEnd)
            hit = ArcHit{item, (relative - arc.start) / arc.length};
        return hit.has_value();
    });
    return hit;
}

ItemAddress addressBeforePress(ItemAddress pressed, ItemAddress standing)
{
    return {standing.section, standing.position + (pressed.position <= standing.position ? 1 : 0)};
}

} // namespace Orbita

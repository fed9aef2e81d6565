#pragma once

#include "base/Angle.h"
#include "base/ItemAddress.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>
#include <vector>

namespace Orbita {

/// The part of the circle that an item takes: where it begins, measured from the start of the ring, and its length.
/// Both in radians, clockwise.
struct RingArc {
    double start = 0.0;
    double length = 0.0;

    [[nodiscard]] double end() const { return start + length; }
};

/// Whether the items near the pointer grow.
enum class Magnification { Off, On };

/// The geometry of a ring of weighted items round the centre of a view.
///
/// Lengths are points in a space with y upwards; angles are radians, clockwise from twelve o'clock. The arc of an item
/// is proportional to its relative size, and its square frame grows with the arc. The sections follow one another
/// round the circle with nothing between them.
struct RingLayout {
    /// A pointer nearer to the centre than this points at no sector.
    static constexpr double deadCentre = 10.0;

    QSizeF size; ///< of the view
    /// One weight for each item, section by section.
    std::vector<std::vector<double>> relativeSizes;
    /// What radius and sectors count. While an item is dragged it is one more than the weights.
    qint64 totalNumberOfItems = 0;
    double startArc = 0.0; ///< where the first arc begins
    /// Where room for one more item of weight 1 is left. It opens before the item that stands there now, or at the
    /// end of the whole ring when the position lies past the last item of its section.
    ItemAddress gap;

    [[nodiscard]] double radius() const;
    [[nodiscard]] double totalRelativeSize() const;
    /// 0 where there is no item.
    [[nodiscard]] double relativeSizeOfItem(ItemAddress address) const;
    void setRelativeSize(double relativeSize, ItemAddress address);
    void setAllRelativeSizes(double relativeSize);

    /// The frames of all items in ring order. No side exceeds a quarter of the view's width.
    [[nodiscard]] std::vector<QRectF> frames() const;
    /// A frame of \a itemSize whose centre lies on the circle in the direction \a angle.
    [[nodiscard]] QRectF frameOnCircle(double angle, QSizeF itemSize) const;

    /// The middle of the item's arc measured from the start of the ring; 0 for an item that is not in it. No gap.
    [[nodiscard]] double centerArcForItem(ItemAddress address) const;
    /// Calls \a visit(address, arc) for every item in ring order, without the gap, until it answers true.
    template <typename Visit>
    void visitArcs(Visit visit) const;
    /// The angle \a angle measured from the start of the ring, in [0, 2 pi).
    [[nodiscard]] double angleFromStart(double angle) const;

    [[nodiscard]] QPointF offsetFromCentre(QPointF point) const;
    /// Which of as many equal slices as there are items lies in the direction of \a offset from the centre; none in
    /// the dead centre. A border belongs to the later sector. An empty ring has sector 0 all round.
    [[nodiscard]] std::optional<qint64> sectorAt(QPointF offset) const;
    /// The middle of a sector.
    [[nodiscard]] double sectorCenter(qint64 index) const;

    /// Gives every item the weight that the pointer in sector \a hovered asks for, and turns the ring so that the
    /// heaviest item (the earliest of equals) stands in the middle of its own sector.
    ///
    /// Weights fall off linearly from pi + 1 under the pointer to 1 on the far side, or are all 1 without
    /// magnification. With NotFound for \a hovered the weights stay and the ring is unturned.
    void magnify(qint64 hovered, Magnification magnification);

    /// Positions counted through all sections, and back. NotFound where there is no such item.
    [[nodiscard]] qint64 indexOf(ItemAddress address) const;
    [[nodiscard]] ItemAddress addressAt(qint64 index) const;
};

template <typename Visit>
void RingLayout::visitArcs(Visit visit) const
{
    const double total = totalRelativeSize();
    const double unit = total > 0.0 ? TwoPi / total : 0.0;
    double start = 0.0;
    for (size_t section = 0; section < relativeSizes.size(); ++section) {
        for (size_t position = 0; position < relativeSizes[section].size(); ++position) {
            const RingArc arc{start, relativeSizes[section][position] * unit};
            if (visit(ItemAddress{qint64(section), qint64(position)}, arc))
                return;
            start = arc.end();
        }
    }
}

} // namespace Orbita

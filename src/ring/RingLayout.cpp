#include "ring/RingLayout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Orbita {

namespace {

constexpr qint64 crowd = 10; // more items than this stand further out
constexpr double radiusShare = 0.305;
constexpr double crowdedRadiusShare = 0.34;
constexpr double arcPerSide = 1.41; // an item's arc length divided by its side
constexpr double largestSideShare = 0.25;

/// How many sectors lie between two of \a count, the short way round.
qint64 sectorDistance(qint64 a, qint64 b, qint64 count)
{
    const qint64 distance = std::abs(a - b) % count;
    return std::min(distance, count - distance);
}

} // namespace

double RingLayout::radius() const
{
    return size.width() * (totalNumberOfItems > crowd ? crowdedRadiusShare : radiusShare);
}

double RingLayout::totalRelativeSize() const
{
    return std::accumulate(relativeSizes.begin(), relativeSizes.end(), 0.0, [](double sum, const auto &section) {
        return std::accumulate(section.begin(), section.end(), sum);
    });
}

double RingLayout::relativeSizeOfItem(ItemAddress address) const
{
    return indexOf(address) == NotFound ? 0.0 : relativeSizes[size_t(address.section)][size_t(address.position)];
}

void RingLayout::setRelativeSize(double relativeSize, ItemAddress address)
{
    if (indexOf(address) != NotFound)
        relativeSizes[size_t(address.section)][size_t(address.position)] = relativeSize;
}

void RingLayout::setAllRelativeSizes(double relativeSize)
{
    for (std::vector<double> &section : relativeSizes)
        std::fill(section.begin(), section.end(), relativeSize);
}

std::vector<QRectF> RingLayout::frames() const
{
    const double total = totalRelativeSize() + (gap.section != NotFound ? 1.0 : 0.0);
    const double unit = total > 0.0 ? TwoPi / total : 0.0;
    const double largestSide = size.width() * largestSideShare;
    std::vector<QRectF> result;
    double arc = startArc;
    for (size_t section = 0; section < relativeSizes.size(); ++section) {
        for (size_t position = 0; position < relativeSizes[section].size(); ++position) {
            if (gap == ItemAddress{qint64(section), qint64(position)})
                arc += unit;
            const double itemArc = relativeSizes[section][position] * unit;
            const double side = std::min(radius() * itemArc / arcPerSide, largestSide);
            result.push_back(frameOnCircle(arc + itemArc * 0.5, {side, side}));
            arc += itemArc;
        }
    }
    return result;
}

QRectF RingLayout::frameOnCircle(double angle, QSizeF itemSize) const
{
    const QPointF center = pointAtAngle(radius(), angle) + QPointF(size.width(), size.height()) * 0.5;
    return {center - QPointF(itemSize.width(), itemSize.height()) * 0.5, itemSize};
}

double RingLayout::centerArcForItem(ItemAddress address) const
{
    double center = 0.0;
    visitArcs([&](ItemAddress visited, RingArc arc) {
        if (visited != address)
            return false;
        center = arc.start + arc.length * 0.5;
        return true;
    });
    return center;
}

double RingLayout::angleFromStart(double angle) const
{
    const double relative = std::fmod(angle - startArc, TwoPi);
    return relative < 0.0 ? relative + TwoPi : relative;
}

QPointF RingLayout::offsetFromCentre(QPointF point) const
{
    return point - QPointF(size.width(), size.height()) * 0.5;
}

std::optional<qint64> RingLayout::sectorAt(QPointF offset) const
{
    if (length(offset) < deadCentre)
        return std::nullopt;
    const double fraction = clockwiseAngle(offset) * 0.5 / Pi;
    const auto index = qint64(double(totalNumberOfItems) * fraction);
    return std::clamp<qint64>(index, 0, std::max<qint64>(totalNumberOfItems - 1, 0));
}

double RingLayout::sectorCenter(qint64 index) const
{
    return totalNumberOfItems > 0 ? (double(index) + 0.5) * TwoPi / double(totalNumberOfItems) : 0.0;
}

void RingLayout::magnify(qint64 hovered, Magnification magnification)
{
    startArc = 0.0;
    if (hovered == NotFound || totalNumberOfItems < 1)
        return;
    const double sectorAngle = TwoPi / double(totalNumberOfItems);
    qint64 index = 0;
    qint64 focus = NotFound;
    double heaviest = 0.0;
    for (std::vector<double> &section : relativeSizes) {
        for (double &relativeSize : section) {
            const double angle = double(sectorDistance(index, hovered, totalNumberOfItems)) * sectorAngle;
            relativeSize = magnification == Magnification::On ? Pi + 1.0 - angle : 1.0;
            if (relativeSize > heaviest) {
                heaviest = relativeSize;
                focus = index;
            }
            ++index;
        }
    }
    if (focus != NotFound)
        startArc = sectorCenter(focus) - centerArcForItem(addressAt(focus));
}

qint64 RingLayout::indexOf(ItemAddress address) const
{
    if (address.section < 0 || address.section >= qint64(relativeSizes.size()))
        return NotFound;
    if (address.position < 0 || address.position >= qint64(relativeSizes[size_t(address.section)].size()))
        return NotFound;
    qint64 index = address.position;
    for (qint64 section = 0; section < address.section; ++section)
        index += qint64(relativeSizes[size_t(section)].size());
    return index;
}

ItemAddress RingLayout::addressAt(qint64 index) const
{
    qint64 before = 0;
    for (size_t section = 0; section < relativeSizes.size(); ++section) {
        const auto count = qint64(relativeSizes[section].size());
        if (index >= before && index < before + count)
            return {qint64(section), index - before};
        before += count;
    }
    return {};
}

} // namespace Orbita

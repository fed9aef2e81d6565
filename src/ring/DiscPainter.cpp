#include "ring/DiscPainter.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace Orbita {

namespace {

// Components are compared as QColor keeps them, in 16 bits: as fractions, 0.99 itself would count as above 0.99.
using Components = std::array<int, 3>;

constexpr int component(double fraction)
{
    return int(fraction * 65535.0 + 0.5);
}

Components components(const QColor &color)
{
    const QRgba64 rgb = color.rgba64();
    return {rgb.red(), rgb.green(), rgb.blue()};
}

QColor withAlpha(QColor color, float alpha)
{
    color.setAlphaF(alpha);
    return color;
}

constexpr double discInset = 1.5; // the outline's middle, so that all of it lies within the bounds
constexpr double outlineWidth = 1.0;
constexpr float darkening = 0.2F;

} // namespace

bool countsAsWhite(const QColor &color)
{
    const Components rgb = components(color);
    return color.isValid() && std::all_of(rgb.begin(), rgb.end(), [](int c) { return c > component(0.99); });
}

bool countsAsBlack(const QColor &color)
{
    const Components rgb = components(color);
    return color.isValid() && std::all_of(rgb.begin(), rgb.end(), [](int c) { return c < component(0.01); });
}

QColor tintFor(const QColor &tint, Backdrop backdrop)
{
    if (!tint.isValid() || backdrop == Backdrop::Blurred || countsAsWhite(tint))
        return tint;
    float hue = 0.0F;
    float saturation = 0.0F;
    float brightness = 0.0F;
    tint.toRgb().getHsvF(&hue, &saturation, &brightness);
    const Components rgb = components(tint);
    if (*std::max_element(rgb.begin(), rgb.end()) > component(darkening))
        brightness -= darkening;
    return QColor::fromHsvF(hue, saturation, std::clamp(brightness, 0.0F, 1.0F)).toRgb();
}

QColor discFill(const QColor &tint, Backdrop backdrop)
{
    const bool isPlain = !tint.isValid() || countsAsWhite(tint);
    if (backdrop == Backdrop::Blurred) {
        if (isPlain)
            return Qt::transparent;
        return countsAsBlack(tint) ? withAlpha(Qt::black, 0.5F) : withAlpha(tint.toRgb(), 0.6F);
    }
    const float alpha = backdrop == Backdrop::Clear ? 0.95F : 1.0F;
    return withAlpha(isPlain ? QColor(Qt::white) : tint.toRgb(), alpha);
}

QColor backdropVeil(const QColor &tint, Backdrop backdrop)
{
    if (backdrop != Backdrop::Blurred)
        return Qt::transparent;
    const bool isLight = !tint.isValid() || countsAsWhite(tint);
    return isLight ? withAlpha(Qt::white, 0.6F) : withAlpha(Qt::black, 0.2F);
}

void paintDisc(QPainter &painter, const QRectF &bounds, const QColor &tint, Backdrop backdrop)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF disc = bounds.adjusted(discInset, discInset, -discInset, -discInset);
    // A window cut out of whole pixels shows what lies under the smooth edge.
    if (backdrop == Backdrop::None)
        painter.fillRect(bounds, Qt::white);
    const QColor veil = backdropVeil(tint, backdrop);
    if (veil.alpha() > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(veil);
        painter.drawEllipse(disc);
    }
    painter.setPen(QPen(Qt::white, outlineWidth));
    painter.setBrush(discFill(tint, backdrop));
    painter.drawEllipse(disc);
    if (backdrop == Backdrop::None)
        return;
    // A white outline alone is lost on a light desktop.
    painter.setPen(QPen(withAlpha(Qt::black, 0.2F), outlineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(disc.adjusted(-outlineWidth, -outlineWidth, outlineWidth, outlineWidth));
}

} // namespace Orbita

#include "control/Tint.h"

namespace Orbita {

double greyLevel(const QColor &color)
{
    const QColor rgb = color.toRgb();
    return 0.299 * rgb.redF() + 0.587 * rgb.greenF() + 0.114 * rgb.blueF();
}

bool isLightTint(const QColor &tint)
{
    return greyLevel(tint) > 0.66;
}

QColor highlightColorOn(const QColor &tint)
{
    return isLightTint(tint) ? Qt::black : Qt::white;
}

QColor closeButtonColorOn(const QColor &tint)
{
    return isLightTint(tint) ? QColor::fromRgbF(1.0F / 3, 1.0F / 3, 1.0F / 3) : QColor(Qt::white);
}

} // namespace Orbita

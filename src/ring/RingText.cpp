#include "ring/RingText.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace Orbita {

namespace {

constexpr qsizetype longestLine = 400; // characters; a name from a file may be of any length
constexpr double largestFontSize = 13.0;

/// Points of type are 1/72 inch at the screen's resolution, ours are device-independent pixels.
double typePointsPerPixel()
{
    QFont probe;
    probe.setPixelSize(100);
    QFont scaled;
    scaled.setPointSizeF(100.0);
    return QFontMetricsF(probe).height() / QFontMetricsF(scaled).height();
}

} // namespace

QFont ringFont(double size)
{
    static const double scale = typePointsPerPixel();
    QFont font = QGuiApplication::font();
    const double rounded = std::max(1.0, std::round(std::min(size, largestFontSize) * 2.0) / 2.0);
    if (rounded == std::floor(rounded))
        font.setPixelSize(int(rounded));
    else
        font.setPointSizeF(rounded * scale);
    return font;
}

QString elidedLine(const QString &text, const QFont &font, double width)
{
    return QFontMetricsF(font).elidedText(text.left(longestLine).simplified(), Qt::ElideRight, width);
}

} // namespace Orbita

#include "editors/LightPalette.h"

#include <QGuiApplication>

namespace Orbita {

namespace {

constexpr QColor ownAccent(38, 108, 196);
constexpr int lightest = 150; // of 255, for white text on the accent colour

} // namespace

QPalette lightPalette()
{
    const QColor desktopAccent = QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
    const QColor accent
        = qGray(desktopAccent.rgb()) <= lightest && desktopAccent.saturation() > 60 ? desktopAccent : ownAccent;
    QPalette palette(QColor(239, 239, 239), Qt::white); // a colour for every role and state
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::ButtonText, Qt::black);
    palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace Orbita

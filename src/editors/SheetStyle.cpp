#include "editors/SheetStyle.h"

#include <QGuiApplication>

#include <cmath>

namespace Orbita {

namespace {

constexpr QColor ownAccent(38, 108, 196);

constexpr double leastContrast = 4.5; // of text, WCAG 2.1, 1.4.3
constexpr int leastSaturation = 60;   // of 255; less is taken for grey

/// WCAG 2.1, "relative luminance": 0 for black, 1 for white.
double luminance(const QColor &color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// WCAG 2.1, "contrast ratio".
double contrastWithWhite(const QColor &color)
{
    return 1.05 / (luminance(color) + 0.05);
}

bool isUsableAccent(const QColor &color)
{
    return contrastWithWhite(color) >= leastContrast && color.hsvSaturation() >= leastSaturation;
}

} // namespace

QColor sheetAccent()
{
    const QColor desktop = QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
    return isUsableAccent(desktop) ? desktop : ownAccent;
}

QPalette sheetPalette()
{
    QPalette palette(QColor(0xf4, 0xf4, 0xf4), Qt::white);
    palette.setColor(QPalette::Highlight, sheetAccent());
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QString sheetStyleSheet()
{
    const QColor accent = sheetAccent();
    return QStringLiteral(R"(
        QLabel, QLineEdit, QPlainTextEdit { color: #000000; background: #ffffff;
                                            selection-color: #ffffff; selection-background-color: %1; }
        QLabel[isQuiet="true"] { color: #666666; }
        QLineEdit, QPlainTextEdit { border: 1px solid #c4c4c4; border-radius: 6px; }
        QLineEdit { min-height: 26px; padding: 0 6px; }
        QPlainTextEdit { padding: 3px; }
        QLineEdit:focus, QPlainTextEdit:focus { border-color: %1; }
        QPushButton { min-height: 26px; padding: 0 12px; border: 1px solid #c4c4c4; border-radius: 6px;
                      background: #ffffff; color: #000000; outline: none; }
        QPushButton:hover { background: #f4f4f4; }
        QPushButton:pressed { background: #e2e2e2; }
        QPushButton:focus { border: 2px solid %1; padding: 0 11px; min-height: 24px; }
        QPushButton[isPrimary="true"] { border-color: %1; background: %1; color: #ffffff; }
        QPushButton[isPrimary="true"]:hover { background: %2; }
        QPushButton[isPrimary="true"]:pressed { background: %3; }
        QPushButton[isPrimary="true"]:focus { border-color: %3; }
        QPushButton:disabled { color: #8c8c8c; background: #f4f4f4; }
        QPushButton[isPrimary="true"]:disabled { border-color: #c4c4c4; background: #f4f4f4; color: #8c8c8c; }
        QScrollBar, QAbstractScrollArea::corner { border: none; background: transparent; }
        QScrollBar:vertical { width: 10px; }
        QScrollBar:horizontal { height: 10px; }
        QScrollBar::handle { border-radius: 3px; background: #c0c0c0; margin: 2px; }
        QScrollBar::handle:vertical { min-height: 24px; }
        QScrollBar::handle:horizontal { min-width: 24px; }
        QScrollBar::handle:hover { background: #909090; }
        QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
        QScrollBar::add-page, QScrollBar::sub-page { background: none; }
    )")
        .arg(accent.name(), accent.darker(112).name(), accent.darker(150).name());
}

} // namespace Orbita

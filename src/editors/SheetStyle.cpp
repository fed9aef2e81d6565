#include "editors/SheetStyle.h"

#include <QGuiApplication>
#include <QPalette>

namespace Orbita {

namespace {

constexpr QColor ownAccent(38, 108, 196);

/// White text on it must be readable, and it must not be taken for grey.
bool isUsableAccent(const QColor &color)
{
    return qGray(color.rgb()) <= 150 && color.hsvSaturation() >= 60;
}

} // namespace

QColor sheetAccent()
{
    const QColor desktop = QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
    return isUsableAccent(desktop) ? desktop : ownAccent;
}

QString sheetStyleSheet()
{
    const QColor accent = sheetAccent();
    return QStringLiteral(R"(
        QLabel, QLineEdit, QPlainTextEdit { color: #000000; background: #ffffff;
                                            selection-color: #ffffff; selection-background-color: %1; }
        QLineEdit, QPlainTextEdit { border: 1px solid #c4c4c4; border-radius: 6px; }
        QLineEdit { min-height: 26px; padding: 0 6px; }
        QPlainTextEdit { padding: 3px; }
        QLineEdit:focus, QPlainTextEdit:focus { border-color: %1; }
        QPushButton { min-height: 26px; padding: 0 12px; border: 1px solid #c4c4c4; border-radius: 6px;
                      background: #ffffff; color: #000000; outline: none; }
        QPushButton:hover { background: #f4f4f4; }
        QPushButton:pressed { background: #e2e2e2; }
        QPushButton:focus { border: 2px solid %1; padding: 0 11px; min-height: 24px; }
        QPushButton#saveButton { border-color: %1; background: %1; color: #ffffff; }
        QPushButton#saveButton:hover { background: %2; }
        QPushButton#saveButton:pressed { background: %3; }
        QPushButton#saveButton:focus { border-color: %3; }
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

#include "platform/desktop/DesktopSettings.h"

#include "companion/host/DialogLook.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

struct Colors {
    QRgb window, text, field, button, accent, accentText;
};
constexpr Colors lightColors{0xfff6f6f7, 0xff1d1f23, 0xffffffff, 0xffffffff, 0xff2f6fdb, 0xffffffff};
constexpr Colors darkColors{0xff2b2d31, 0xfff1f2f4, 0xff1f2124, 0xff3d4046, 0xff4c86ee, 0xffffffff};

QPalette paletteOf(const Colors &colors)
{
    QPalette palette(QColor(colors.button), QColor(colors.window));
    palette.setColor(QPalette::WindowText, QColor(colors.text));
    palette.setColor(QPalette::Text, QColor(colors.text));
    palette.setColor(QPalette::ButtonText, QColor(colors.text));
    palette.setColor(QPalette::Button, QColor(colors.button));
    palette.setColor(QPalette::Base, QColor(colors.field));
    palette.setColor(QPalette::Highlight, QColor(colors.accent));
    palette.setColor(QPalette::HighlightedText, QColor(colors.accentText));
    return palette;
}

/// \a share of \a over on \a under, as a style sheet writes it.
QString mixed(const QColor &under, const QColor &over, double share)
{
    const auto mix = [share](int a, int b) { return int(a + (b - a) * share); };
    return QColor(mix(under.red(), over.red()), mix(under.green(), over.green()), mix(under.blue(), over.blue()))
        .name();
}

/// KDE writes colours as "red,green,blue", which the settings file's reader takes for a list.
bool isDark(const QStringList &channels)
{
    return channels.size() >= 3
        && QColor(channels[0].toInt(), channels[1].toInt(), channels[2].toInt()).lightness() < 128;
}

} // namespace

bool prefersDarkWindows()
{
    if (currentDesktops().contains("KDE"_L1)) {
        const auto settings = openSettingsFile(kdeGlobalsPath());
        return settings && isDark(settings->value(u"Colors:Window/BackgroundNormal"_s).toStringList());
    }
    const auto settings = openInterfaceSettings();
    if (!settings || !hasKey(settings.get(), "color-scheme"))
        return false;
    const GlibPointer<char> scheme(g_settings_get_string(settings.get(), "color-scheme"));
    return qstrcmp(scheme.get(), "prefer-dark") == 0;
}

QPalette dialogPalette(const QPalette &current, const QPalette &ofToolkit, bool prefersDark)
{
    const bool isToolkits = current.color(QPalette::Window) == ofToolkit.color(QPalette::Window);
    return isToolkits ? paletteOf(prefersDark ? darkColors : lightColors) : current;
}

QString dialogStyleSheet(const QPalette &palette)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    const QColor field = palette.color(QPalette::Base);
    const QColor button = palette.color(QPalette::Button);
    const QColor accent = palette.color(QPalette::Highlight);
    const QColor accentText = palette.color(QPalette::HighlightedText);
    // A border of two pixels takes one from the padding: nothing moves when the focus does.
    const QString sheet = uR"(
        QDialog { background: %window; }
        QLabel, QPlainTextEdit { color: %text; }
        QLabel#quiet, QPlainTextEdit#quiet { color: %quiet; }
        QPushButton { background: %button; color: %text; border: 1px solid %border; border-radius: 6px;
                      padding: 5px 16px; min-width: 58px; min-height: 18px; outline: none; }
        QPushButton:hover { background: %hover; }
        QPushButton:pressed { background: %pressed; }
        QPushButton:disabled { color: %disabled; background: %window; }
        QPushButton:focus { border: 2px solid %accent; padding: 4px 15px; }
        QPushButton[isDefault="true"] { background: %accent; color: %onAccent; border-color: %accent; font-weight: 600; }
        QPushButton[isDefault="true"]:hover { background: %accentHover; }
        QPushButton[isDefault="true"]:pressed { background: %accentPressed; }
        QPushButton[isDefault="true"]:focus { border: 2px solid %accentRing; }
        QPushButton[isDefault="true"]:disabled { background: %disabledAccent; border-color: %disabledAccent; }
        QLineEdit, QListView, QPlainTextEdit[isField="true"] { background: %field; color: %text;
            border: 1px solid %border; border-radius: 6px; padding: 5px 7px;
            selection-background-color: %accent; selection-color: %onAccent; }
        QLineEdit:focus, QListView:focus, QPlainTextEdit[isField="true"]:focus { border: 2px solid %accent; padding: 4px 6px; }
        QLineEdit:read-only { background: %code; }
        QPlainTextEdit { background: transparent; border: none; }
        QListView#items { padding: 4px; outline: none; }
        QListView#items:focus { padding: 3px; }
        QListView#items::item { padding: 5px 8px; border-radius: 4px; color: %text; }
        QListView#items::item:selected { background: %accent; color: %onAccent; }
        QScrollBar:vertical { background: transparent; width: 10px; margin: 2px; }
        QScrollBar::handle:vertical { background: %handle; border-radius: 3px; min-height: 24px; }
        QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
        QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
    )"_s;
    const std::initializer_list<std::pair<QLatin1String, QString>> values{
        // A name that begins with another one comes before it.
        {"%accentHover"_L1, mixed(accent, accentText, 0.12)},
        {"%accentPressed"_L1, mixed(accent, QColor(Qt::black), 0.2)},
        {"%accentRing"_L1, mixed(accent, text, 0.45)},
        {"%disabledAccent"_L1, mixed(window, accent, 0.45)},
        {"%disabled"_L1, mixed(window, text, 0.4)},
        {"%accent"_L1, accent.name()},
        {"%onAccent"_L1, accentText.name()},
        {"%border"_L1, mixed(window, text, 0.22)},
        {"%button"_L1, button.name()},
        {"%code"_L1, mixed(window, text, 0.05)},
        {"%field"_L1, field.name()},
        {"%handle"_L1, mixed(window, text, 0.35)},
        {"%hover"_L1, mixed(button, text, 0.06)},
        {"%pressed"_L1, mixed(button, text, 0.14)},
        {"%quiet"_L1, mixed(window, text, 0.68)},
        {"%text"_L1, text.name()},
        {"%window"_L1, window.name()},
    };
    QString filled = sheet;
    for (const auto &[name, value] : values)
        filled.replace(name, value);
    return filled;
}

void useDialogPalette()
{
    const QPalette current = QApplication::palette();
    const QPalette palette = dialogPalette(current, QApplication::style()->standardPalette(), prefersDarkWindows());
    if (palette != current)
        QApplication::setPalette(palette);
}

void applyDialogLook(QWidget &dialog)
{
    useDialogPalette();
    dialog.setStyleSheet(dialogStyleSheet(QApplication::palette()));
}

} // namespace Orbita

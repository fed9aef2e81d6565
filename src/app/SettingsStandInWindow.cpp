#include "app/SettingsStandInWindow.h"

#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

namespace Orbita {

SettingsStandInWindow::SettingsStandInWindow(QWidget *parent) : QWidget(parent)
{
    setWindowTitle(tr("Orbita Settings"));
    setObjectName(QStringLiteral("settings"));
    auto *title = new QLabel(tr("Orbita is running"));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    title->setFont(large);
    auto *text = new QLabel(tr("<p>The command <b>orbita show</b> shows the ring round the pointer. "
                               "Bind it to a key in your desktop's keyboard settings.</p>"
                               "<p>Click an entry to open it. Drag entries to rearrange them. "
                               "Escape, or a click elsewhere, closes the ring.</p>"));
    text->setWordWrap(true);
    text->setTextFormat(Qt::RichText);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 24, 28, 24);
    layout->setSpacing(8);
    layout->addWidget(title);
    layout->addWidget(text);
    setFixedWidth(440);
}

void SettingsStandInWindow::present(TakesKeyboard keyboard)
{
    setAttribute(Qt::WA_ShowWithoutActivating, keyboard == TakesKeyboard::No);
    adjustSize();
    if (const QScreen *where = screen()) {
        QRect frame = frameGeometry(); // it has one once it has been shown
        frame.moveCenter(where->availableGeometry().center());
        move(frame.topLeft());
    }
    show();
    raise();
    if (keyboard == TakesKeyboard::Yes)
        activateWindow();
}

} // namespace Orbita

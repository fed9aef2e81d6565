#include "companion/host/DialogWindow.h"

#include "companion/host/DialogLook.h"
#include "companion/script/LineBreaks.h"

#include <QBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocument>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

constexpr int iconSide = 48;               // points
constexpr qsizetype longText = 700;        // characters; beyond, and beyond longTextLines, a text scrolls
constexpr qsizetype longTextLines = 14;    // line breaks
constexpr int longTextHeight = 260;        // points
constexpr qsizetype maximumText = 200'000; // characters; laying out more takes seconds

/// As much of \a text as is shown, with the line breaks of this system.
QString shownText(const QString &text)
{
    const QString shown = withLineFeeds(text.left(maximumText)).remove(QChar::Null);
    return text.size() > maximumText ? shown + u'…' : shown;
}

/// A label breaks lines between words only, and grows without end.
bool fitsLabel(const QString &text, const QFontMetrics &metrics)
{
    if (text.size() > longText || text.count(u'\n') > longTextLines)
        return false;
    const QStringList words = text.simplified().split(u' ');
    return std::ranges::all_of(words, [&metrics](const QString &word) {
        return metrics.horizontalAdvance(word) < DialogWindow::contentWidth;
    });
}

QWidget *makeLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setFixedWidth(DialogWindow::contentWidth);
    return label;
}

/// The height of \a text in a column of the dialog; only whether it is less than longTextHeight is certain.
int heightOf(const QString &text, const QFont &font)
{
    constexpr int scrollBarWidth = 16; // points, with the space before it
    QTextDocument document(text.left(longText * 4));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.setDefaultTextOption(option);
    document.setDefaultFont(font);
    document.setDocumentMargin(0);
    document.setTextWidth(DialogWindow::contentWidth - scrollBarWidth);
    return int(std::ceil(document.size().height())) + QFontMetrics(font).descent();
}

QWidget *makeScrollingText(const QString &text)
{
    auto *view = new QPlainTextEdit(text);
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    view->document()->setDocumentMargin(0);
    // A line that is cut through looks like a fault.
    const int lineHeight = view->fontMetrics().lineSpacing();
    const int wholeLines = longTextHeight / lineHeight * lineHeight;
    view->setFixedSize(DialogWindow::contentWidth, std::min(wholeLines, heightOf(text, view->font())));
    return view;
}

QFont styled(QFont font, DialogWindow::TextStyle style)
{
    if (style == DialogWindow::TextStyle::Strong) {
        font.setPointSizeF(font.pointSizeF() * 1.12);
        font.setWeight(QFont::DemiBold);
    }
    return font;
}

} // namespace

DialogWindow::DialogWindow(const QString &title)
    : m_head(new QHBoxLayout), m_content(new QVBoxLayout), m_buttons(new QHBoxLayout)
{
    setWindowTitle(title.isEmpty() ? u"Orbita"_s : title.left(200).simplified());
    applyDialogLook(*this);
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 24, 24, 20);
    layout->setSpacing(22);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addLayout(m_head);
    layout->addLayout(m_buttons);
    m_head->setSpacing(18);
    m_head->addLayout(m_content);
    m_content->setSpacing(8);
    m_buttons->setSpacing(10);
    m_buttons->addStretch();
}

void DialogWindow::setIcon(const QIcon &icon)
{
    auto *label = new QLabel;
    label->setPixmap(icon.pixmap(QSize(iconSide, iconSide), devicePixelRatio()));
    label->setFixedSize(iconSide, iconSide);
    m_head->insertWidget(0, label, 0, Qt::AlignTop);
}

void DialogWindow::addText(const QString &text, TextStyle style)
{
    const QString shown = shownText(text);
    const QFont textFont = styled(font(), style);
    const bool isLabel = fitsLabel(shown, QFontMetrics(textFont));
    QWidget *widget = isLabel ? makeLabel(shown) : makeScrollingText(shown);
    // Many lines in bold are hard to read.
    if (isLabel)
        widget->setFont(textFont);
    if (style == TextStyle::Quiet)
        widget->setObjectName(u"quiet"_s);
    addContent(widget);
    if (accessibleDescription().isEmpty())
        setAccessibleDescription(shown.left(longText));
}

void DialogWindow::addContent(QWidget *widget)
{
    m_content->addWidget(widget);
}

QPushButton &DialogWindow::addButton(const QString &text)
{
    constexpr int maximumWidth = 240; // points
    const QString shown = shownText(text.left(maximumText)).simplified();
    auto *button = new QPushButton;
    button->setText(button->fontMetrics().elidedText(shown, Qt::ElideMiddle, maximumWidth).replace(u'&', "&&"_L1));
    button->setAccessibleName(shown.left(longText));
    button->setAutoDefault(false);
    const int index = m_buttonCount++;
    connect(button, &QPushButton::clicked, this, [this, index] { done(index); });
    m_buttons->addWidget(button);
    return *button;
}

void DialogWindow::setDefaultButton(QPushButton &button)
{
    m_default = &button;
    button.setProperty("isDefault", true);
}

void DialogWindow::setCancelButton(QPushButton &button)
{
    m_cancel = &button;
    setWindowFlag(Qt::WindowCloseButtonHint);
}

void DialogWindow::reject()
{
    if (m_cancel)
        m_cancel->click();
}

void DialogWindow::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (m_givingUpAfter > 0) {
        const double milliseconds = std::min<double>(m_givingUpAfter * 1000, std::numeric_limits<int>::max());
        QTimer::singleShot(int(milliseconds), this, [this] { done(gaveUp); });
    }
}

void DialogWindow::keyPressEvent(QKeyEvent *event)
{
    // The toolkit's own default button is that with the focus, once one has it.
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
    else if (m_default && m_default->isEnabled())
        m_default->click();
}

} // namespace Orbita

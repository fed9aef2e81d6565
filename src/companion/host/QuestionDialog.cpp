#include "companion/host/QuestionDialog.h"

#include "companion/script/LineBreaks.h"
#include "platform/desktop/IconTheme.h"

#include <QApplication>
#include <QIcon>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>

namespace Orbita {

namespace {

using namespace Qt::StringLiterals;

/// A field of one line would show the line breaks of a preset answer as something else.
bool hasLines(const QString &text)
{
    return text.contains(u'\n') || text.contains(u'\r');
}

} // namespace

QIcon dialogIcon(DialogRequest::Icon icon)
{
    useDesktopIconTheme();
    const auto themed = [](const QString &name, QStyle::StandardPixmap preset) {
        return QIcon::fromTheme(name, QApplication::style()->standardIcon(preset));
    };
    switch (icon) {
    case DialogRequest::Icon::None:
        break;
    case DialogRequest::Icon::Note:
        return themed(u"dialog-information"_s, QStyle::SP_MessageBoxInformation);
    case DialogRequest::Icon::Caution:
        return themed(u"dialog-warning"_s, QStyle::SP_MessageBoxWarning);
    case DialogRequest::Icon::Stop:
        return themed(u"dialog-error"_s, QStyle::SP_MessageBoxCritical);
    }
    return {};
}

QuestionDialog::QuestionDialog(const DialogRequest &request) : DialogWindow(request.title)
{
    if (const QIcon icon = dialogIcon(request.icon); !icon.isNull())
        setIcon(icon);
    addText(request.text, request.isAlert ? TextStyle::Strong : TextStyle::Plain);
    if (!request.message.isEmpty())
        addText(request.message, TextStyle::Quiet);
    for (const QString &text : request.buttons) {
        QPushButton &button = addButton(text);
        if (!text.isEmpty() && text == request.defaultButton)
            setDefaultButton(button);
        if (!text.isEmpty() && text == request.cancelButton)
            setCancelButton(button);
        button.setFocus();
    }
    if (defaultButton())
        defaultButton()->setFocus();
    if (request.defaultAnswer)
        addField(request);
    giveUpAfter(request.givingUpAfter);
}

void QuestionDialog::addField(const DialogRequest &request)
{
    QWidget *field = nullptr;
    if (hasLines(*request.defaultAnswer) && !request.isAnswerHidden) {
        field = m_lines = new QPlainTextEdit(withLineFeeds(*request.defaultAnswer));
        m_lines->setProperty("isField", true);
        m_lines->setTabChangesFocus(true);
        m_lines->setFixedHeight(5 * m_lines->fontMetrics().lineSpacing() + 20);
        m_lines->selectAll();
    } else {
        field = m_field = new QLineEdit(*request.defaultAnswer);
        m_field->setEchoMode(request.isAnswerHidden ? QLineEdit::Password : QLineEdit::Normal);
        m_field->selectAll();
    }
    field->setObjectName(u"answer"_s);
    field->setAccessibleName(request.text.left(500));
    field->setFixedWidth(contentWidth);
    addContent(field);
    field->setFocus();
    setTabOrder(field, nextInFocusChain());
}

QString QuestionDialog::answer() const
{
    if (m_lines)
        return withCarriageReturns(m_lines->toPlainText());
    return m_field ? m_field->text() : QString();
}

} // namespace Orbita

#include "editors/LinkEditorViewController.h"

#include "editors/ImageWell.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QValidator>

#include <algorithm>
#include <limits>
#include <utility>

namespace Orbita {

namespace {

constexpr int margin = 16; // points

/// Takes out the line breaks that come along with a pasted address.
class SingleLine final : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString &input, int &position) const override
    {
        const auto isBreak = [](QChar c) {
            return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
        };
        const qsizetype before = std::count_if(input.cbegin(), input.cbegin() + position, isBreak);
        input.removeIf(isBreak);
        position -= int(before);
        return Acceptable;
    }
};

} // namespace

LinkEditorViewController::LinkEditorViewController(EditorText urlString, const Image &image, Dialogs &dialogs,
                                                   Scheduler &scheduler)
    : ItemEditorViewController(std::move(urlString), image, dialogs, scheduler), m_urlField(new QLineEdit(this))
{
    m_urlField->setObjectName(QStringLiteral("urlField"));
    m_urlField->setAccessibleName(QStringLiteral("Address"));
    m_urlField->setMaxLength(std::numeric_limits<int>::max());
    m_urlField->setValidator(new SingleLine(m_urlField));
    m_urlField->setInputMethodHints(Qt::ImhUrlCharactersOnly | Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
    m_urlField->setPlaceholderText(QStringLiteral("https://"));
    showText();
    if (!showsDraft()) // which is gone on with, rather than replaced
        m_urlField->selectAll();
    connect(m_urlField, &QLineEdit::textChanged, this, &LinkEditorViewController::edited);
    layOut();
}

void LinkEditorViewController::layOut()
{
    constexpr int wellSide = 104;
    imageView().setFixedSize(wellSide, wellSide);
    auto *label = new QLabel(QStringLiteral("Address"), this);
    label->setBuddy(m_urlField);
    auto *head = new QHBoxLayout;
    head->addWidget(label);
    head->addStretch();
    if (QLabel *note = makeDraftNote())
        head->addWidget(note);
    auto *rows = new QVBoxLayout;
    rows->setSpacing(6);
    rows->addLayout(head);
    rows->addWidget(m_urlField);
    rows->addStretch();
    rows->addLayout(makeButtons(*m_urlField));
    auto *columns = new QHBoxLayout(this);
    columns->setContentsMargins(margin, margin, margin, margin);
    columns->setSpacing(16);
    columns->addWidget(&imageView());
    columns->addLayout(rows, 1);
}

QWidget &LinkEditorViewController::firstField()
{
    return *m_urlField;
}

QString LinkEditorViewController::editedText() const
{
    return m_urlField->text();
}

void LinkEditorViewController::setEditedText(const QString &text)
{
    m_urlField->setText(text);
}

} // namespace Orbita

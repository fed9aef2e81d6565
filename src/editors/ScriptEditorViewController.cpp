#include "editors/ScriptEditorViewController.h"

#include "editors/DocumentColoring.h"
#include "editors/ImageWell.h"
#include "editors/ScriptTextView.h"
#include "ring/RingText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QTextDocument>

#include <utility>

namespace Orbita {

namespace {

constexpr double titleSize = 13.0;
constexpr int margin = 20; // points
constexpr int wellSide = 56;

QFont titleFont()
{
    QFont font = ringFont(titleSize);
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

ScriptEditorViewController::ScriptEditorViewController(EditorText script, const QString &title, const Image &image,
                                                       Dialogs &dialogs, Scheduler &scheduler)
    : ItemEditorViewController(std::move(script), image, dialogs, scheduler),
      m_title(title),
      m_titleField(new QLabel(this)),
      m_textView(new ScriptTextView(this))
{
    m_titleField->setObjectName(QStringLiteral("titleField"));
    m_titleField->setAccessibleName(title);
    m_titleField->setTextFormat(Qt::PlainText);
    m_titleField->setFont(titleFont());
    m_textView->setObjectName(QStringLiteral("textView"));
    m_textView->setAccessibleName(QStringLiteral("Script"));
    showText();
    layOut();
    m_updateTimer.setSingleShot(true);
    connect(&m_updateTimer, &QTimer::timeout, this, &ScriptEditorViewController::tick);
    connect(m_textView, &ScriptTextView::compositionChanged, &m_updateTimer, qOverload<>(&QTimer::start));
    connect(m_textView, &ScriptTextView::textChanged, this, &ScriptEditorViewController::textDidChange);
    connect(m_textView, &ScriptTextView::textChanged, this, &ScriptEditorViewController::edited);
    refreshColoring();
}

void ScriptEditorViewController::layOut()
{
    imageView().setFixedSize(wellSide, wellSide);
    m_titleField->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(2);
    titles->addStretch();
    titles->addWidget(m_titleField);
    if (QLabel *note = makeDraftNote())
        titles->addWidget(note);
    titles->addStretch();
    auto *head = new QHBoxLayout;
    head->setSpacing(14);
    head->addWidget(&imageView());
    head->addLayout(titles, 1);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(margin, margin, margin, margin);
    rows->setSpacing(14);
    rows->addLayout(head);
    rows->addWidget(m_textView, 1);
    rows->addLayout(makeButtons(*m_textView));
}

QWidget &ScriptEditorViewController::firstField()
{
    return *m_textView;
}

QString ScriptEditorViewController::editedText() const
{
    return m_textView->script();
}

void ScriptEditorViewController::setEditedText(const QString &text)
{
    m_textView->setScript(text);
}

void ScriptEditorViewController::resizeEvent(QResizeEvent *event)
{
    ItemEditorViewController::resizeEvent(event);
    layout()->activate();
    m_titleField->setText(elidedLine(m_title, titleFont(), m_titleField->width()));
}

void ScriptEditorViewController::refreshColoring()
{
    applyColoring(*m_textView->document(), scriptColoring(m_textView->script()));
}

} // namespace Orbita

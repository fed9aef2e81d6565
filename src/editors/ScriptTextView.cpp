#include "editors/ScriptTextView.h"

#include "editors/DocumentColoring.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMimeData>

namespace Orbita {

namespace {

constexpr int fontSize = 13;
constexpr int tabWidth = 4; // characters

QFont scriptFont()
{
    const QString wanted = QStringLiteral("Courier New");
    // Asked for by name, a missing font would be replaced by one whose strokes are too thin to read.
    QFont font = QFontDatabase::hasFamily(wanted) ? QFont(wanted) : QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(fontSize);
    return font;
}

/// \a text as the document takes it in: with no breaks but line feeds.
QString withLineFeeds(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (const char16_t lineBreak : {u'\r', char16_t(QChar::LineSeparator), char16_t(QChar::ParagraphSeparator)})
        text.replace(QChar(lineBreak), QChar(u'\n'));
    return text;
}

} // namespace

ScriptTextView::ScriptTextView(QWidget *parent) : QPlainTextEdit(parent)
{
    setFont(scriptFont());
    setTabStopDistance(QFontMetricsF(font()).horizontalAdvance(u' ') * tabWidth);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setInputMethodHints(Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText | Qt::ImhMultiLine);
}

QString ScriptTextView::script() const
{
    return plainText(*document());
}

void ScriptTextView::setScript(const QString &script)
{
    setPlainText(withLineFeeds(script));
}

void ScriptTextView::keyPressEvent(QKeyEvent *event)
{
    const bool isControl = event->modifiers() & Qt::ControlModifier;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && isControl)
        event->ignore();
    else if (isReturn && event->modifiers().testFlag(Qt::ShiftModifier))
        textCursor().insertBlock(); // a line as any other, where the toolkit would break one within itself
    else if (event->key() == Qt::Key_Backtab)
        QWidget::focusNextPrevChild(false);
    else if (event->key() == Qt::Key_Tab && isControl)
        QWidget::focusNextPrevChild(true);
    else
        QPlainTextEdit::keyPressEvent(event);
}

void ScriptTextView::inputMethodEvent(QInputMethodEvent *event)
{
    QPlainTextEdit::inputMethodEvent(event);
    Q_EMIT compositionChanged();
}

void ScriptTextView::insertFromMimeData(const QMimeData *source)
{
    if (source->hasText())
        textCursor().insertText(withLineFeeds(source->text()));
    ensureCursorVisible();
}

} // namespace Orbita

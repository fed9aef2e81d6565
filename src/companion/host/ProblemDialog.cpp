#include "companion/host/ProblemDialog.h"

#include "companion/host/QuestionDialog.h"
#include "companion/host/ScriptDialogs.h"

#include <QFontDatabase>
#include <QIcon>
#include <QLineEdit>
#include <QPushButton>

namespace Orbita {

using namespace Qt::StringLiterals;

ProblemDialog::ProblemDialog(const ProblemReport &report) : DialogWindow(QString())
{
    constexpr qsizetype maximumLine = 2000; // characters
    setIcon(dialogIcon(DialogRequest::Icon::Caution));
    addText(report.heading, TextStyle::Strong);
    addText(report.sentence);
    if (report.line > 0) {
        addText(u"Line %1"_s.arg(report.line), TextStyle::Quiet);
        auto *code = new QLineEdit(report.lineText.left(maximumLine).trimmed());
        code->setObjectName(u"line"_s);
        code->setAccessibleName(u"Line %1"_s.arg(report.line));
        code->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        code->setReadOnly(true);
        code->setCursorPosition(0);
        code->setFixedWidth(contentWidth);
        addContent(code);
    }
    QPushButton &button = addButton(u"OK"_s);
    setDefaultButton(button);
    setCancelButton(button);
    button.setFocus();
}

} // namespace Orbita

#include "companion/host/ScriptDialogs.h"
#include "companion/host/DialogLook.h"
#include "support/RowName.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace Orbita {

namespace {

ScriptDialogs dialogs()
{
    return ScriptDialogs([](QWindow &) {});
}

/// Presses keys, as soon as a dialog waits for them, in whatever has the keyboard; other characters are typed.
void pressInNextDialog(const QList<Qt::Key> &keys, const QString &typed = {})
{
    QTimer::singleShot(0, qApp, [keys, typed] {
        QWidget *dialog = QApplication::activeModalWidget();
        const auto send = [dialog](int key, const QString &text) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
            QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
            QCoreApplication::sendEvent(dialog->focusWidget(), &press);
            QCoreApplication::sendEvent(dialog->focusWidget(), &release);
        };
        for (const QChar character : typed)
            send(0, character);
        for (const Qt::Key key : keys)
            send(key, {});
    });
}

struct QuestionRow {
    const char *name;
    DialogRequest request;
    QList<Qt::Key> keys;
    QString typed;
    QString button;
    QString answer = {};
    bool gaveUp = false;
    bool isCancelled = false;
};

DialogRequest question(std::optional<QString> answer = {}, double givingUpAfter = 0)
{
    DialogRequest request;
    request.text = u"<b>Which</b> way?"_s;
    request.buttons = {u"Cancel"_s, u"Left & right"_s, u"Straight on"_s};
    request.defaultButton = u"Straight on"_s;
    request.cancelButton = u"Cancel"_s;
    request.defaultAnswer = answer;
    request.givingUpAfter = givingUpAfter;
    return request;
}

/// One that neither Return nor Escape closes.
DialogRequest plainQuestion(double givingUpAfter)
{
    DialogRequest request = question({}, givingUpAfter);
    request.defaultButton.clear();
    request.cancelButton.clear();
    return request;
}

class Question : public testing::TestWithParam<QuestionRow> {};

TEST_P(Question, IsAnsweredByKeys)
{
    const QuestionRow &row = GetParam();
    pressInNextDialog(row.keys, row.typed);
    const auto reply = dialogs().displayDialog(row.request);
    ASSERT_EQ(reply.hasValue(), !row.isCancelled);
    if (row.isCancelled) {
        EXPECT_EQ(reply.error().number, ScriptFailure::userCancelled);
        return;
    }
    EXPECT_EQ(reply->buttonReturned, row.button);
    EXPECT_EQ(reply->textReturned, row.answer);
    EXPECT_EQ(reply->gaveUp, row.gaveUp);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, Question,
    testing::Values(
        QuestionRow{"Return presses the default button", question(), {Qt::Key_Return}, {}, u"Straight on"_s},
        QuestionRow{
            "also while another one has the focus", question(), {Qt::Key_Backtab, Qt::Key_Enter}, {}, u"Straight on"_s},
        QuestionRow{"Space presses the one with the focus",
                    question(),
                    {Qt::Key_Backtab, Qt::Key_Space},
                    {},
                    u"Left & right"_s},
        QuestionRow{"Escape cancels", question(), {Qt::Key_Escape}, {}, {}, {}, false, true},
        QuestionRow{"what is typed replaces the preset answer",
                    question(u"old"_s),
                    {Qt::Key_Return},
                    u"new"_s,
                    u"Straight on"_s,
                    u"new"_s},
        QuestionRow{"an answer of several lines keeps them",
                    question(u"one\rtwo"_s),
                    {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space},
                    {},
                    u"Left & right"_s,
                    u"one\rtwo"_s},
        QuestionRow{"without such buttons neither key closes it",
                    plainQuestion(0),
                    {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space},
                    {},
                    u"Straight on"_s},
        QuestionRow{"in the end it gives up", plainQuestion(0.01), {Qt::Key_Escape}, {}, {}, {}, true}),
    rowName<QuestionRow>);

struct ListRow {
    const char *name;
    bool allowsMultiple, allowsEmpty;
    QStringList preset;
    QList<Qt::Key> keys;
    std::optional<QStringList> chosen;
};

class List : public testing::TestWithParam<ListRow> {};

TEST_P(List, IsChosenFrom)
{
    const ListRow &row = GetParam();
    pressInNextDialog(row.keys);
    ListRequest request{
        {u"Red"_s, u"Green"_s, u"Blue"_s}, {}, {}, row.preset, {}, {}, row.allowsMultiple, row.allowsEmpty};
    const auto chosen = dialogs().chooseFromList(request);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(*chosen, row.chosen);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, List,
    testing::Values(
        ListRow{"the preset item", false, false, {u"Green"_s}, {Qt::Key_Return}, QStringList{u"Green"_s}},
        ListRow{"the next item", false, false, {u"Green"_s}, {Qt::Key_Down, Qt::Key_Return}, QStringList{u"Blue"_s}},
        ListRow{"several items in the lists order",
                true,
                false,
                {u"Blue"_s, u"Red"_s},
                {Qt::Key_Return},
                QStringList{u"Red"_s, u"Blue"_s}},
        ListRow{"only one where only one may be",
                false,
                false,
                {u"Blue"_s, u"Red"_s},
                {Qt::Key_Return},
                QStringList{u"Blue"_s}},
        ListRow{"nothing may be chosen", false, true, {}, {Qt::Key_Return}, QStringList()},
        ListRow{"where something must be Return does not close it",
                false,
                false,
                {},
                {Qt::Key_Return, Qt::Key_Escape},
                std::nullopt}),
    rowName<ListRow>);

TEST(FilePanel, GivesAPathAndIsCancelled)
{
    FileRequest folder;
    folder.choosesFolders = true;
    folder.startFolder = u"/usr/share"_s;
    pressInNextDialog({Qt::Key_Return}, u"/usr"_s);
    const auto chosen = dialogs().chooseFiles(folder);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(*chosen, QStringList(u"/usr"_s)) << "not the folders on the way to it";
    pressInNextDialog({Qt::Key_Escape});
    EXPECT_EQ(dialogs().chooseFiles(folder).error().number, ScriptFailure::userCancelled);
}

TEST(Dialog, StaysOnTheScreenAndUsableWhateverTheText)
{
    DialogRequest request = question();
    request.text = QString(5'000'000, u'x');
    request.message = QString(100'000, u'\r');
    request.buttons[1] = QString(10'000, u'&');
    QTimer::singleShot(0, qApp, [] {
        const QWidget *dialog = QApplication::activeModalWidget();
        EXPECT_LT(dialog->width(), 800);
        EXPECT_LT(dialog->height(), 700);
    });
    pressInNextDialog({Qt::Key_Return});
    EXPECT_TRUE(dialogs().displayDialog(request));
}

TEST(Dialog, ShowsTheLineOfAProblemAsItIs)
{
    QTimer::singleShot(0, qApp, [] {
        const auto *line = QApplication::activeModalWidget()->findChild<QLineEdit *>(u"line"_s);
        EXPECT_EQ(line->text(), u"say <b>"_s);
        EXPECT_TRUE(QFontInfo(line->font()).fixedPitch());
    });
    pressInNextDialog({Qt::Key_Escape});
    dialogs().showProblem({u"The script is not understood."_s, 3, u"\tsay <b>"_s, u"\"<\" is not understood."_s});
}

TEST(DialogPalette, KeepsTheDesktopsColoursAndElseFollowsItsPreference)
{
    const QPalette toolkits(Qt::lightGray), desktops(Qt::darkGreen);
    EXPECT_EQ(dialogPalette(desktops, toolkits, true), desktops);
    for (const bool isDark : {false, true}) {
        const QPalette own = dialogPalette(toolkits, toolkits, isDark);
        EXPECT_EQ(own.color(QPalette::Window).lightness() < 128, isDark);
        EXPECT_EQ(own.color(QPalette::WindowText).lightness() > 128, isDark);
        EXPECT_FALSE(dialogStyleSheet(own).contains(u'%')) << dialogStyleSheet(own).toStdString();
    }
}

} // namespace

} // namespace Orbita

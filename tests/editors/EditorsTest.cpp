#include "editors/AutosaveTimer.h"
#include "editors/DocumentColoring.h"
#include "editors/ImageWell.h"
#include "editors/LinkEditorViewController.h"
#include "editors/ScriptEditorViewController.h"
#include "editors/ScriptTextView.h"
#include "platform/memory/MemoryDialogs.h"
#include "platform/memory/MemoryScheduler.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMimeData>
#include <QPushButton>
#include <QSemaphore>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

class EditorsTest : public testing::Test {
protected:
    template <typename Editor>
    Editor &show(std::unique_ptr<Editor> editor)
    {
        Editor &shown = *editor;
        shown.setFinishHandler([this](const QString &text, const std::optional<Image> &image) {
            answers.append(text);
            pictures.push_back(image);
        });
        shown.resize(700, 450);
        shown.firstField().setFocus();
        shown.show();
        QApplication::setActiveWindow(&shown);
        m_editor = std::move(editor);
        return shown;
    }
    ScriptEditorViewController &showScript(const EditorText &script)
    {
        return show(
            std::make_unique<ScriptEditorViewController>(script, QStringLiteral("Apple Script - Long").repeated(99),
                                                         Image::named(QStringLiteral("Script")), dialogs, scheduler));
    }
    LinkEditorViewController &showLink(const EditorText &address)
    {
        return show(std::make_unique<LinkEditorViewController>(address, Image::named(QStringLiteral("Bookmark")),
                                                               dialogs, scheduler));
    }
    static void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
    }
    /// The names of the fields that get the keyboard one after the other.
    static QStringList walk(int steps, Qt::KeyboardModifiers modifiers)
    {
        QStringList names;
        for (; steps > 0; --steps) {
            press(Qt::Key_Tab, modifiers);
            names.append(QApplication::focusWidget()->objectName());
        }
        return names;
    }
    MemoryDialogs dialogs;
    MemoryScheduler scheduler;
    QStringList answers;
    std::vector<std::optional<Image>> pictures;

private:
    std::unique_ptr<QWidget> m_editor;
};

TEST_F(EditorsTest, keysWriteSaveAndCloseAScript)
{
    const ScriptEditorViewController &editor = showScript(QStringLiteral("to"));
    QTest::keyClicks(&editor.textView(), QStringLiteral("x"));
    press(Qt::Key_Return);
    press(Qt::Key_Return, Qt::ShiftModifier);
    press(Qt::Key_Tab);
    EXPECT_TRUE(answers.isEmpty()) << "these keys write";
    press(Qt::Key_Return, Qt::ControlModifier);
    press(Qt::Key_S, Qt::ControlModifier);
    ASSERT_EQ(answers.size(), 2);
    EXPECT_EQ(answers[0], QStringLiteral("x\n\n\tto"));
    EXPECT_EQ(answers[1], answers[0]);
    for (int undone = 0; editor.textView().document()->isUndoAvailable() && undone < 10; ++undone)
        press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor.textView().script(), QStringLiteral("to")) << "colouring is nothing to undo";
    press(Qt::Key_Escape);
    EXPECT_FALSE(editor.isVisible());
    EXPECT_EQ(answers.size(), 2) << "a slip discards nothing";
}

TEST_F(EditorsTest, theKeyboardReachesEveryField)
{
    showLink(QString());
    const QStringList afterTheText{QStringLiteral("imageView"), QStringLiteral("discardButton"),
                                   QStringLiteral("saveButton")};
    EXPECT_EQ(walk(4, Qt::NoModifier), afterTheText + QStringList(QStringLiteral("urlField")));
    walk(2, Qt::NoModifier);
    press(Qt::Key_Return);
    ASSERT_EQ(answers.size(), 1);
    const ScriptEditorViewController &editor = showScript(QString());
    walk(1, Qt::ControlModifier);
    EXPECT_EQ(walk(2, Qt::NoModifier), afterTheText.mid(1));
    editor.textView().setFocus();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_FALSE(editor.textView().hasFocus());
    EXPECT_TRUE(editor.textView().script().isEmpty());
}

TEST_F(EditorsTest, textsOfAnyKindComeThrough)
{
    ScriptTextView &view = showScript(QStringLiteral("a\r\nb\rc")).textView();
    EXPECT_EQ(view.script(), QStringLiteral("a\nb\nc"));
    view.selectAll();
    QApplication::clipboard()->setText(u"1\r\n2\u20283\u20294\u00A0\xD800"_qs + QChar(u'\0') + u'5');
    view.paste();
    EXPECT_EQ(view.script(), u"1\n2\n3\n4\u00A0\xD800"_qs + QChar(u'\0') + u'5');

    QLineEdit &field = showLink(QStringLiteral("https://x")).urlField();
    const QString address = QStringLiteral("https://") + QStringLiteral("long/").repeated(20'000);
    QApplication::clipboard()->setText(address + QStringLiteral("\r\n"));
    field.paste();
    press(Qt::Key_Return);
    ASSERT_FALSE(answers.isEmpty());
    EXPECT_EQ(answers.back(), address);
}

TEST_F(EditorsTest, savingWaitsForThePictureThatIsBeingRead)
{
    const LinkEditorViewController &editor = showLink(QStringLiteral("x"));
    editor.imageView().copy();
    const auto isRead = [&] { return QTest::qWaitFor([&] { return !editor.imageView().isReading(); }, 60'000); };
    const auto pasteAndPress = [&](int key) {
        editor.imageView().paste();
        press(key);
        return isRead();
    };
    editor.imageView().paste();
    press(Qt::Key_Return);
    editor.findChild<QPushButton *>(QStringLiteral("discardButton"))->click();
    EXPECT_TRUE(isRead());
    QCoreApplication::processEvents();
    EXPECT_TRUE(pictures.size() == 1 && !pictures[0] && !editor.imageChanged()) << "discarding does not wait";
    EXPECT_TRUE(pasteAndPress(Qt::Key_Return));
    EXPECT_TRUE(pictures.size() == 2 && pictures[1] && pictures[1] != editor.baseImage());
    dialogs.file = QStringLiteral("/gone/gone.png");
    QApplication::clipboard()->clear();
    editor.imageView().choose();
    EXPECT_TRUE(pasteAndPress(Qt::Key_Return));
    EXPECT_EQ(dialogs.alerts.size(), 1U);
    EXPECT_EQ(pictures.size(), 2U) << "what was refused is seen before it is saved without it";
    press(Qt::Key_Return);
    EXPECT_EQ(pictures.size(), 3U);
}

TEST_F(EditorsTest, savingGivesUpAPictureThatDoesNotCome)
{
    using namespace std::chrono_literals;
    const LinkEditorViewController &editor = showLink(QStringLiteral("x"));
    ImageWell &well = editor.imageView();
    const auto gate = std::make_shared<QSemaphore>();
    well.setReader([gate](const GivenPicture &given) {
        gate->acquire();
        return readPicture(given);
    });
    well.copy();
    well.paste();
    press(Qt::Key_Return);
    scheduler.advance(4s);
    EXPECT_TRUE(well.isReading() && pictures.empty());
    scheduler.advance(1s);
    ASSERT_TRUE(pictures.size() == 1 && dialogs.alerts.size() == 1);
    EXPECT_TRUE(!pictures[0] && well.image() == editor.baseImage());
    EXPECT_TRUE(dialogs.alerts[0].message.contains(QStringLiteral("could not be read")));

    well.paste();
    press(Qt::Key_Return);
    gate->release(2); // the first one comes as well
    EXPECT_TRUE(QTest::qWaitFor([&] { return !well.isReading(); }, 60'000));
    scheduler.advance(5s);
    EXPECT_TRUE(pictures.size() == 2 && pictures[1] && dialogs.alerts.size() == 1);
}

TEST_F(EditorsTest, aDraftIsWhatDiffersFromTheStoredItem)
{
    const ScriptEditorViewController &script = showScript(QStringLiteral("a\r\nb"));
    EXPECT_FALSE(script.draft()) << "line breaks that the field writes otherwise are no change of the user's";
    press(Qt::Key_X);
    EXPECT_EQ(script.draft()->text, QStringLiteral("xa\nb"));
    EXPECT_FALSE(script.draft()->picture);
    press(Qt::Key_Backspace);
    EXPECT_FALSE(script.draft());
    const LinkEditorViewController &link = showLink(QStringLiteral("x"));
    link.imageView().copy();
    link.imageView().paste();
    EXPECT_TRUE(QTest::qWaitFor([&] { return link.draft().has_value(); }, 60'000));
    EXPECT_EQ(link.draft()->picture, link.imageView().image());
}

TEST_F(EditorsTest, goOnWithADraftAndSaySo)
{
    QLocale::setDefault(QLocale::c());
    const Image picture = Image::named(QStringLiteral("Finder"));
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const auto words
        = [](const QWidget &editor) { return editor.findChild<QLabel *>(QStringLiteral("draftNote"))->text(); };
    const LinkEditorViewController &link = showLink({QStringLiteral("old"), Draft{QStringLiteral("ha"), picture, now}});
    EXPECT_EQ(words(link), QStringLiteral("Draft from %1, not saved yet").arg(now.toLocalTime().toString(u"HH:mm")));
    EXPECT_EQ(link.imageView().image(), picture);
    QTest::keyClicks(&link.urlField(), QStringLiteral("lf"));
    EXPECT_EQ(link.draft()->text, QStringLiteral("half")) << "what is there is not written over";
    press(Qt::Key_Return);
    link.findChild<QPushButton *>(QStringLiteral("discardButton"))->click();
    EXPECT_EQ(answers, QStringList({QStringLiteral("half"), QStringLiteral("old")}));
    EXPECT_TRUE(pictures[0] == picture && !pictures[1]);

    const ScriptEditorViewController &script
        = showScript({QStringLiteral("b"), Draft{QStringLiteral("ab"), {}, now.addDays(-2)}});
    EXPECT_EQ(script.textView().script(), QStringLiteral("ab"));
    EXPECT_EQ(script.textView().accessibleDescription(), words(script));
    EXPECT_TRUE(words(script).contains(QLocale().toString(now.addDays(-2).toLocalTime().date(), QLocale::ShortFormat)));
    press(Qt::Key_Delete);
    EXPECT_FALSE(script.draft()) << "the stored script was typed again";
    QLocale::setDefault(QLocale::system());
}

TEST_F(EditorsTest, isSavedInThePausesAndAtTheLatestAfterTenSeconds)
{
    using namespace std::chrono_literals;
    int saves = 0;
    AutosaveTimer timer(scheduler, [&saves] { ++saves; });
    timer.noteChange();
    scheduler.advance(900ms);
    timer.noteChange();
    scheduler.advance(1s);
    EXPECT_EQ(saves, 0);
    scheduler.advance(1s);
    EXPECT_EQ(saves, 1);
    scheduler.advance(60s);
    EXPECT_EQ(saves, 1) << "nothing has changed since";
    for (int tenths = 0; tenths < 200; ++tenths) {
        timer.noteChange();
        scheduler.advance(100ms);
    }
    EXPECT_EQ(saves, 3);
}

QList<QTextLayout::FormatRange> formats(const ScriptTextView &view, int line)
{
    return view.document()->findBlockByNumber(line).layout()->formats();
}

TEST_F(EditorsTest, coloursFollowTheText)
{
    ScriptTextView &view = showScript(QStringLiteral("set x\nlog x\nto 5")).textView();
    ASSERT_EQ(formats(view, 0).size(), 1);
    EXPECT_EQ(formats(view, 0).front().format.foreground().color().rgb(), qRgb(128, 0, 128));
    EXPECT_TRUE(formats(view, 1).isEmpty());
    EXPECT_EQ(formats(view, 2).size(), 2);
    EXPECT_EQ(applyColoring(*view.document(), scriptColoring(view.script())), 0) << "all is coloured already";

    view.moveCursor(QTextCursor::End);
    press(Qt::Key_6);
    EXPECT_EQ(formats(view, 2).back().length, 2);
    view.moveCursor(QTextCursor::Start);
    press(Qt::Key_QuoteDbl);
    for (int line = 0; line < 3; ++line) {
        ASSERT_EQ(formats(view, line).size(), 1) << "a string over line " << line;
        EXPECT_EQ(formats(view, line).front().format.foreground().color().rgb(), qRgb(0, 0, 255));
    }
}

TEST_F(EditorsTest, colourComesBackAfterAComposition)
{
    ScriptTextView &view = showScript(QStringLiteral("set 5")).textView();
    const auto before = formats(view, 0);
    view.moveCursor(QTextCursor::Right);
    QInputMethodEvent composing(QStringLiteral("´´"), {});
    QApplication::sendEvent(&view, &composing);
    const auto isColoredRound = [&] { return formats(view, 0).size() == 4 && formats(view, 0)[1].start == 3; };
    EXPECT_TRUE(QTest::qWaitFor(isColoredRound)) << "what is composed has a look of its own";
    QInputMethodEvent cancelled;
    QApplication::sendEvent(&view, &cancelled);
    EXPECT_TRUE(QTest::qWaitFor([&] { return formats(view, 0) == before; }));
    EXPECT_EQ(view.script(), QStringLiteral("set 5"));
}

} // namespace
} // namespace Orbita

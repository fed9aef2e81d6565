#include "editors/ImageWell.h"
#include "editors/SheetItemEditors.h"
#include "editors/VXSheetWindowController.h"
#include "platform/memory/MemoryDialogs.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryStage.h"
#include "support/RowName.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QThreadPool>
#include <QTimer>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

struct WayOut {
    const char *name;
    std::function<void(QWidget &sheet)> leave;
    const char *answer; ///< null: none, and what was typed is kept as a draft
};

class SheetTest : public testing::TestWithParam<WayOut> {
protected:
    MemoryStage stage;
    MemoryBlurBehind blur;
    SheetTest()
    {
        dialogs.whileOpen = [] {
            QEventLoop asking;
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
            asking.exec();
        };
    }
    MemoryDialogs dialogs;
    MemoryScheduler scheduler;
    SheetItemEditors editors{stage, blur, dialogs, scheduler};
};

void click(QWidget &sheet, const char *button)
{
    QTest::mouseClick(sheet.findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
}

void pasteRubbish(QWidget &sheet)
{
    auto clip = std::make_unique<QMimeData>();
    clip->setData(QStringLiteral("image/png"), "rubbish");
    QApplication::clipboard()->setMimeData(clip.release());
    sheet.findChild<ImageWell *>()->paste();
}

TEST_P(SheetTest, isAnsweredOnceAndGoes)
{
    stage.plantedScreens.push_back({QRectF(1280, 0, 1000, 600), 1.0});
    stage.pointer = {1300, 10};
    QPointer<QWidget> sheet;
    QStringList answers;
    QStringList drafts;
    std::size_t alertsInTime = 0;
    const auto use = [&] {
        sheet = QApplication::activeModalWidget();
        ASSERT_TRUE(sheet);
        EXPECT_EQ(stage.lastFrame, QRectF(1540, 232, 480, 136)) << "in the middle of the pointer's screen";
        EXPECT_EQ(stage.presented, 1);
        QTest::keyClicks(sheet->focusWidget(), QStringLiteral("new"));
        GetParam().leave(*sheet);
    };
    // An event loop of the program's own, which may end beneath the sheet.
    QTimer::singleShot(0, &stage, [&] {
        QTimer::singleShot(0, &stage, use);
        editors.editLink(QStringLiteral("old"), {},
                         {[&](const QString &text, const auto &) { answers.append(text); },
                          [&](const auto &draft) { drafts.append(draft ? draft->text : QString()); }});
        alertsInTime = dialogs.alerts.size();
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    });
    QApplication::exec();
    EXPECT_EQ(dialogs.alerts.size(), alertsInTime) << "nothing is said of a sheet that is closed";
    const char *answer = GetParam().answer;
    EXPECT_EQ(answers, answer ? QStringList(QLatin1String(answer)) : QStringList());
    EXPECT_EQ(drafts, answer ? QStringList() : QStringList(QStringLiteral("new")));
    scheduler.advance(std::chrono::minutes(1));
    EXPECT_LE(drafts.size(), 1) << "nothing is kept after the end";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(sheet) << "the sheet is gone";
}

INSTANTIATE_TEST_SUITE_P(
    Ways, SheetTest,
    testing::Values(
        WayOut{"Save", [](QWidget &sheet) { click(sheet, "saveButton"); }, "new"},
        WayOut{"Discard", [](QWidget &sheet) { click(sheet, "discardButton"); }, "old"},
        WayOut{"Return", [](QWidget &sheet) { QTest::keyClick(sheet.focusWidget(), Qt::Key_Return); }, "new"},
        WayOut{"Escape", [](QWidget &sheet) { QTest::keyClick(sheet.focusWidget(), Qt::Key_Escape); }, nullptr},
        WayOut{"Escape while saving waits for a picture",
               [](QWidget &sheet) {
                   pasteRubbish(sheet);
                   QTest::keyClick(sheet.focusWidget(), Qt::Key_Return);
                   QThreadPool::globalInstance()->waitForDone();
                   QTest::keyClick(sheet.focusWidget(), Qt::Key_Escape);
               },
               nullptr},
        WayOut{"closed by the window manager", [](QWidget &sheet) { sheet.close(); }, nullptr},
        WayOut{"the program quits", [](QWidget &) { QCoreApplication::quit(); }, nullptr},
        WayOut{"the program quits while a file is chosen",
               [](QWidget &sheet) { sheet.findChild<ImageWell *>()->choose(); }, nullptr},
        WayOut{"the program quits while a picture is refused", pasteRubbish, nullptr},
        WayOut{"the event loops end", [](QWidget &) { QCoreApplication::exit(); }, nullptr}),
    rowName<WayOut>);

TEST_F(SheetTest, keepsADraftWhileTheUserWrites)
{
    QStringList drafts;
    QTimer::singleShot(0, &stage, [&] {
        QWidget *sheet = QApplication::activeModalWidget();
        QTest::keyClick(sheet->focusWidget(), Qt::Key_X);
        EXPECT_TRUE(drafts.isEmpty()) << "not with each key";
        scheduler.advance(std::chrono::seconds(1));
        QTest::keyClick(sheet->focusWidget(), Qt::Key_Backspace);
        scheduler.advance(std::chrono::seconds(1));
        sheet->close();
    });
    editors.editScript(QStringLiteral("y"), {}, {},
                       {[](const QString &, const auto &) { ADD_FAILURE() << "neither saved nor discarded"; },
                        [&](const auto &draft) { drafts.append(draft ? draft->text : QStringLiteral("none")); }});
    EXPECT_EQ(drafts, QStringList({QStringLiteral("xy"), QStringLiteral("none"), QStringLiteral("none")}));
}

TEST_F(SheetTest, isReadableOnADarkDesktopAndNamedForScreenReaders)
{
    const QPalette usual = QApplication::palette();
    QPalette dark(Qt::black, Qt::black);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        dark.setColor(role, Qt::white);
    QApplication::setPalette(dark);
    QTimer::singleShot(0, &stage, [] {
        QWidget *sheet = QApplication::activeModalWidget();
        EXPECT_GT(sheet->grab().toImage().pixelColor(650, 300).lightness(), 250);
        for (const QWidget *child : sheet->findChildren<QPlainTextEdit *>())
            EXPECT_EQ(child->palette().color(QPalette::Text), QColor(Qt::black));
        for (const QWidget *child : sheet->findChildren<QLabel *>())
            EXPECT_EQ(child->palette().color(QPalette::WindowText), QColor(Qt::black));
        for (QWidget *child : sheet->findChildren<QWidget *>()) {
            const QAccessibleInterface *access = QAccessible::queryAccessibleInterface(child);
            const bool isReached = child->focusPolicy() & Qt::TabFocus;
            EXPECT_TRUE(!isReached || !access->text(QAccessible::Name).isEmpty()) << qPrintable(child->objectName());
        }
        sheet->close();
    });
    editors.editScript(QString(), QStringLiteral("Apple Script - x"), {},
                       {[](const QString &, const auto &) {}, [](const auto &) {}});
    QApplication::setPalette(usual);
}

TEST_F(SheetTest, livesUntilItsWindowCloses)
{
    auto held = VXSheetWindowController::withContentViewController(stage, blur, std::make_unique<QWidget>());
    const std::weak_ptr controller = held;
    const QPointer content = &held->contentController();
    VXSheetWindow &window = held->window();
    window.present({700, 450});
    EXPECT_EQ(content->size(), QSize(700, 450));
    held.reset();
    EXPECT_FALSE(controller.expired()) << "nobody need keep it";
    window.close();
    EXPECT_TRUE(controller.expired());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(content);
}

TEST_F(SheetTest, comesBackFromWhereNobodyCanReachIt)
{
    stage.plantedScreens = {{QRectF(0, 0, 1280, 800), 1.0}, {QRectF(1280, 0, 1280, 800), 1.0}};
    const auto controller
        = VXSheetWindowController::withContentViewController(stage, blur, std::make_unique<QWidget>());
    VXSheetWindow &window = controller->window();
    Q_EMIT stage.screensChanged();
    EXPECT_FALSE(window.isVisible());
    window.present({700, 450});
    const QRectF middle(290, 175, 700, 450);
    const auto move = [&](QPointF corner) {
        stage.place(*window.windowHandle(), {corner, middle.size()});
        const QRect wanted = stage.toDesktop(stage.lastFrame).toRect();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.geometry() == wanted; }));
    };
    const auto cornerAfterMoving = [&](QPointF corner) {
        move(corner);
        Q_EMIT stage.screensChanged();
        return stage.lastFrame.topLeft();
    };
    for (const QPointF reached : {QPointF(-340, 340), QPointF(0, -220), QPointF(1800, 0), QPointF(930, 0)})
        EXPECT_EQ(cornerAfterMoving(reached), reached);
    for (const QPointF lost : {QPointF(-360, 0), QPointF(0, 400), QPointF(0, -230), QPointF(2300, 0)})
        EXPECT_EQ(cornerAfterMoving(lost), middle.topLeft());
    move({1570, 175});
    stage.plantedScreens = {{QRectF(0, 0, 640, 400), 1.0}};
    window.recover();
    EXPECT_EQ(stage.lastFrame, QRectF(0, 0, 640, 400));
    window.close();
}

TEST_F(SheetTest, isMovedByItsBackgroundAndCutOutWhereNothingIsBlended)
{
    const auto controller
        = VXSheetWindowController::withContentViewController(stage, blur, std::make_unique<QWidget>());
    VXSheetWindow &window = controller->window();
    window.present({700, 450});
    const QRectF before = stage.lastFrame;
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, {20, 20});
    QTest::mouseMove(window.windowHandle(), {50, 30});
    EXPECT_EQ(stage.lastFrame, before.translated(30, -10));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, {20, 20});
    blur.setAvailable(true);
    EXPECT_TRUE(blur.region.isEmpty()) << "it hides what is behind it";
    stage.setCompositing(false);
    const QImage shown = window.grab().toImage();
    EXPECT_FALSE(window.mask().contains(QPoint(1, 1)));
    for (const QRect &row : window.mask())
        EXPECT_GT(shown.pixelColor(row.topLeft()).value(), 100) << "black must not shine through";
    window.close();
}

} // namespace
} // namespace Orbita

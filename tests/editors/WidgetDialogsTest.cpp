#include "editors/WidgetDialogs.h"
#include "editors/SheetStyle.h"
#include "platform/memory/MemoryStage.h"
#include "support/TemporaryContainer.h"

#include <QApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <gtest/gtest.h>

namespace Orbita {
namespace {

TEST(WidgetDialogs, answerByKeysAndByClosing)
{
    MemoryStage stage;
    WidgetDialogs dialogs(stage);
    const auto answerAfter = [&](auto &&deed) {
        QTimer::singleShot(0, &stage, deed);
        return dialogs.runAlert({QStringLiteral("Run?"), {}, QStringLiteral("Run Later Cancel").split(u' ')});
    };
    EXPECT_EQ(answerAfter([] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); }), 0);
    EXPECT_EQ(answerAfter([] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); }), 2);
    EXPECT_EQ(answerAfter([] { QApplication::activeModalWidget()->close(); }), 2);
    EXPECT_EQ(stage.presented, 3) << "each has the keyboard";
}

TEST(WidgetDialogs, chooseAFileOnWhiteAlsoOnADarkDesktop)
{
    const QPalette usual = QApplication::palette();
    QApplication::setPalette(QPalette(Qt::black, Qt::black));
    MemoryStage stage;
    WidgetDialogs dialogs(stage);
    const TemporaryContainer container;
    const QString path = container.write(QStringLiteral("a.PNG"), "x");
    const Dialogs::FileRequest request{QStringLiteral("Choose"), QStringLiteral("Pictures"), {QStringLiteral("*.png")}};
    const auto dialog = [] { return qobject_cast<QFileDialog *>(QApplication::activeModalWidget()); };
    QTimer::singleShot(0, &stage, [&] {
        const QTreeView &files = *dialog()->findChild<QTreeView *>();
        EXPECT_GT(dialog()->grab().toImage().pixelColor(5, 5).lightness(), 250);
        EXPECT_GT(files.viewport()->grab().toImage().pixelColor(5, files.viewport()->height() - 5).lightness(), 250);
        EXPECT_LE(files.header()->length(), files.viewport()->width()) << "no column is cut off";
        dialog()->selectFile(path);
        QMetaObject::invokeMethod(dialog(), "accept");
    });
    EXPECT_EQ(dialogs.chooseFile(request), path);
    QTimer::singleShot(0, &stage, [&] { dialog()->reject(); });
    EXPECT_EQ(dialogs.chooseFile(request), std::nullopt);
    QApplication::setPalette(usual);
}

TEST(WidgetDialogs, takeAnAccentThatWhiteTextCanBeReadOn)
{
    const QPalette usual = QApplication::palette();
    const auto isTaken = [](const QColor &accent) {
        QPalette palette;
        palette.setColor(QPalette::Highlight, accent);
        QApplication::setPalette(palette);
        return sheetAccent() == accent;
    };
    EXPECT_TRUE(isTaken(QColor(0, 0, 255))) << "contrast 8.6";
    EXPECT_TRUE(isTaken(QColor(0, 134, 0))) << "4.7";
    EXPECT_FALSE(isTaken(QColor(0, 139, 0))) << "4.4";
    EXPECT_FALSE(isTaken(QColor(233, 84, 32))) << "3.6";
    EXPECT_FALSE(isTaken(QColor(90, 90, 90))) << "grey";
    QApplication::setPalette(usual);
}

} // namespace
} // namespace Orbita

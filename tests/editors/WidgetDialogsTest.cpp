#include "editors/WidgetDialogs.h"
#include "platform/memory/MemoryStage.h"
#include "support/TemporaryContainer.h"

#include <QApplication>
#include <QFileDialog>
#include <QTest>
#include <QTimer>

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

TEST(WidgetDialogs, chooseAFile)
{
    MemoryStage stage;
    WidgetDialogs dialogs(stage);
    const TemporaryContainer container;
    const QString path = container.write(QStringLiteral("a.PNG"), "x");
    const Dialogs::FileRequest request{QStringLiteral("Choose"), QStringLiteral("Pictures"), {QStringLiteral("*.png")}};
    const auto dialog = [] { return qobject_cast<QFileDialog *>(QApplication::activeModalWidget()); };
    QTimer::singleShot(0, &stage, [&] {
        dialog()->selectFile(path);
        QMetaObject::invokeMethod(dialog(), "accept");
    });
    EXPECT_EQ(dialogs.chooseFile(request), path);
    QTimer::singleShot(0, &stage, [&] { dialog()->reject(); });
    EXPECT_EQ(dialogs.chooseFile(request), std::nullopt);
}

} // namespace
} // namespace Orbita

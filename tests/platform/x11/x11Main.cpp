#include "ForeignClient.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

/// Gives the toolkit a server with a window manager of its own, unless the tests are only listed.
int main(int argc, char **argv)
{
    using namespace Orbita;
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    std::optional<VirtualDisplay> display;
    {
        const QCoreApplication whileItStarts(argc, argv);
        display.emplace();
        display->startWindowManager();
    }
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DISPLAY", display->name());
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

#include "XServer.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

/// Gives the toolkit a server with a window manager of its own, unless the tests are only listed.
int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    Orbita::XServer server;
    server.startWindowManager();
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DISPLAY", server.display());
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

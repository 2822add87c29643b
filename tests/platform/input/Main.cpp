#include "tests/support/desktop/XServer.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

/// These tests press real keys: all of them run as a client of an X server of their own.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const glimmerly::XvfbServer server;
    ::setenv("DISPLAY", server.display().c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

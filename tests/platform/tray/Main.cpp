#include "tests/support/desktop/SessionBus.h"
#include "tests/support/desktop/XServer.h"

#include <QApplication>
#include <QProcess>
#include <QSystemTrayIcon>
#include <gtest/gtest.h>

/// A desktop of the tests' own: an X server and a session bus, with no tray until a test starts one.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const glimmerly::XvfbServer server;
    const glimmerly::SessionBus bus;
    ::setenv("DISPLAY", server.display().c_str(), 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", bus.address().c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    const QApplication application(argc, argv);
    // The program makes the first of these only while no host is on the bus, and Qt (6.4) remembers that.
    const QSystemTrayIcon pinned;
    QProcess windowManager; // panels wait for one
    windowManager.start("openbox", {});
    const int result = RUN_ALL_TESTS();
    windowManager.kill();
    windowManager.waitForFinished();
    return result;
}

#pragma once

#include "base/NotificationCenter.h"
#include "capture/permission/ScreenRecordingPermission.h"
#include "settings/SettingsWindowController.h"
#include "settings/updates/UpdaterViewModel.h"
#include "tests/support/FakeApplication.h"
#include "tests/support/FakeBugReports.h"
#include "tests/support/FakeLinkOpener.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakeScreenCapture.h"
#include "tests/support/FakeScreenRecordingAccess.h"
#include "tests/support/FakeStatusItem.h"
#include "tests/support/FakeUpdates.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RecorderServices.h"
#include "tests/support/Widgets.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {

/// The window on a desktop that the test plays.
struct SettingsFixture : testing::Test {
    void show() {
        controller.show();
        queue.runAll();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        QApplication::setActiveWindow(&window);
    }
    template <typename T>
    T& find(const QString& name) {
        return widgetNamed<T>(name, window);
    }
    QPushButton& button(const QString& name) { return find<QPushButton>(name); }
    [[nodiscard]] std::vector<std::string> texts() const { return shownTexts(window); }

    LogCapture log;
    FakeMainQueue queue;
    FakeApplication application;
    NotificationCenter notifications;
    FakeScreenCapture screenCapture{queue};
    FakeScreenRecordingAccess access;
    ScreenRecordingPermission permission{access, screenCapture, 77};
    RecorderServices recorder;
    FakeLinkOpener links;
    FakeBugReports bugReports;
    FakeStatusItem statusItem;
    FakeUpdater updater;
    int checks = 0; ///< for updates
    FakeUpdaterController updaterController{updater, checks};
    UpdaterViewModel updaterViewModel{updaterController};
    SettingsWindowController controller{{.bundle = {.shortVersion = "1.4.2",
                                                    .websiteURL = "https://site.example",
                                                    .donationURL = "https://site.example/donate"},
                                         .application = application,
                                         .mainQueue = queue,
                                         .notifications = notifications,
                                         .recorder = recorder.services,
                                         .permission = permission,
                                         .links = links,
                                         .bugReports = bugReports,
                                         .statusItem = statusItem,
                                         .updaterViewModel = updaterViewModel,
                                         .checkForUpdates = [this] { ++checks; }}};
    QWidget& window = controller.window();
    GlimmerlyPreferencesRoot& root = controller.root();
};

} // namespace glimmerly

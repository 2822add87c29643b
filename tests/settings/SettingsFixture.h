#pragma once

#include "capture/permission/ScreenRecordingPermission.h"
#include "settings/SettingsWindowController.h"
#include "settings/updates/UpdaterViewModel.h"
#include "tests/support/FakeBugReports.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeUpdates.h"
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
struct SettingsFixture : testing::Test, FakeDesktop {
    void show() {
        controller.show();
        mainQueue.runAll();
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
    ScreenRecordingPermission permission{screenRecording, screenCapture, 77};
    RecorderServices recorder;
    FakeBugReports bugReports;
    FakeUpdater updater;
    int checks = 0; ///< for updates
    FakeUpdaterController updaterController{updater, checks};
    UpdaterViewModel updaterViewModel{updaterController};
    SettingsWindowController controller{{.bundle = {.shortVersion = "1.4.2",
                                                    .websiteURL = "https://site.example",
                                                    .donationURL = "https://site.example/donate"},
                                         .application = application,
                                         .mainQueue = mainQueue,
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

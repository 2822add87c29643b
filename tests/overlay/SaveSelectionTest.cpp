#include "overlay/ScreenshotOverlayController.h"
#include "overlay/canvas/OverlayCanvasView.h"
#include "overlay/toolbar/OverlayToolbarView.h"
#include "tests/support/FakeApplication.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakeOverlayWindows.h"
#include "tests/support/FakePasteboard.h"
#include "tests/support/FakeSavePanel.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/FakeTelemetry.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/TestPictures.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <gtest/gtest.h>

#include <regex>

namespace glimmerly {
namespace {

/// An overlay over a real capture; a drag selects, the toolbar's Download is tapped.
class SaveSelection : public testing::Test {
protected:
    SaveSelection() {
        writePng(capture, noisePicture({320, 200}));
        controller.presentOverlay(capture);
    }
    ~SaveSelection() override {
        controller.closeOverlay();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void mouse(QEvent::Type type, QPointF at, Qt::MouseButtons buttons) {
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, at, button, buttons, Qt::NoModifier);
        QApplication::sendEvent(controller.window()->contentView(), &event);
    }
    void select() {
        mouse(QEvent::MouseButtonPress, {10, 11}, Qt::LeftButton);
        mouse(QEvent::MouseMove, {110, 61}, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, {110, 61}, Qt::NoButton);
    }
    void download() {
        controller.window()->contentView()->toolbar().onDownloadTapped();
        mainQueue.runAll();
    }
    void answer(SavePanelResponse response, std::optional<std::filesystem::path> location = {}) {
        savePanel.answer = {response, std::move(location)};
    }

    ScratchDirectory directory;
    std::filesystem::path capture = directory.path() / "glimmerly-capture-1.png";
    LogCapture log;
    FakeApplication application;
    FakeScreens screens{{FakeScreens::display({320, 200})}};
    FakeWorkspace workspace;
    FakeOverlayWindows overlayWindows;
    FakePasteboard pasteboard;
    FakeSavePanel savePanel;
    FakeMainQueue mainQueue;
    FakeTelemetry telemetry;
    WallTime now{};
    ScreenshotOverlayController controller{{.application = application,
                                            .screens = screens,
                                            .workspace = workspace,
                                            .overlayWindows = overlayWindows,
                                            .pasteboard = pasteboard,
                                            .savePanel = savePanel,
                                            .mainQueue = mainQueue,
                                            .telemetry = telemetry,
                                            .bundleIdentifier = "app.glimmerly.Glimmerly",
                                            .clock = [this] { return now; }}};
};

TEST_F(SaveSelection, ClosesTheOverlayThenAsksAndWrites) {
    select();
    answer(SavePanelResponse::ok, directory.path() / "picture");
    bool wasClosed = false;
    savePanel.onRun = [&] {
        wasClosed = !controller.window() && !exists(capture);
        now += std::chrono::minutes(1);
    };
    now += std::chrono::microseconds(1'234'567);
    download();
    ASSERT_EQ(telemetry.events.size(), 2u);
    EXPECT_EQ(telemetry.events[1],
              (FakeTelemetry::Event{"overlay_dismissed", {{"source", "save"}, {"overlay_active_ms", 1234}}}))
        << "the time in the panel does not count";
    EXPECT_TRUE(wasClosed);
    ASSERT_EQ(savePanel.requests.size(), 1u);
    const std::regex name(R"(Glimmerly Capture \d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d\.png)");
    EXPECT_TRUE(std::regex_match(savePanel.requests[0].nameField, name)) << savePanel.requests[0].nameField;
    EXPECT_EQ(QImage((directory.path() / "picture.png").c_str()).size(), QSize(100, 50));
    EXPECT_TRUE(log.withMessage("Atomic PNG write failed from overlay save").empty());
}

TEST_F(SaveSelection, LeavesAnyExtensionAsItIs) {
    select();
    answer(SavePanelResponse::ok, directory.path() / "picture.image");
    download();
    EXPECT_EQ(QImage((directory.path() / "picture.image").c_str(), "PNG").size(), QSize(100, 50));
}

TEST_F(SaveSelection, ACancelledPanelWritesAndLogsNothing) {
    select();
    const auto before = log.records().size();
    download();
    EXPECT_EQ(log.records().size(), before);
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST_F(SaveSelection, AFailureIsLoggedWithItsReason) {
    select();
    answer(SavePanelResponse::ok, directory.path() / "missing" / "picture.png");
    download();
    const auto reason = log.withMessage("Atomic PNG write failed from overlay save");
    ASSERT_EQ(reason.size(), 1u);
    EXPECT_EQ(reason[0].metadata->at("url"), "picture.png");
    EXPECT_TRUE(reason[0].errorSummary);
    const auto lines = log.withMessage("writeCroppedImagePNG returned false after save panel");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].metadata->at("destination"), "picture.png");
    EXPECT_EQ(telemetry.events.size(), 1u) << "opened, and not dismissed with a file";
}

TEST_F(SaveSelection, APanelWithoutALocationIsLogged) {
    select();
    answer(SavePanelResponse::ok);
    download();
    EXPECT_EQ(log.withMessage("Save sheet completed without a URL despite non-cancel response").size(), 1u);
}

TEST_F(SaveSelection, WithoutASelectionTheOverlayStaysOpen) {
    download();
    EXPECT_TRUE(controller.window());
    EXPECT_TRUE(exists(capture));
    EXPECT_TRUE(savePanel.requests.empty());
    EXPECT_EQ(log.withMessage("Save requested without a valid selection bitmap").size(), 1u);
}

TEST_F(SaveSelection, DoneCopiesAndCloseDropsTheCapture) {
    select();
    controller.window()->contentView()->toolbar().onDoneTapped();
    EXPECT_FALSE(controller.window());
    ASSERT_TRUE(pasteboard.image);
    EXPECT_EQ(pasteboard.image->size(), (PixelSize{100, 50}));
    EXPECT_EQ(telemetry.events.back(),
              (FakeTelemetry::Event{"overlay_dismissed", {{"source", "copy"}, {"overlay_active_ms", 0}}}));

    writePng(capture, noisePicture({320, 200}));
    controller.presentOverlay(capture);
    controller.window()->contentView()->toolbar().onCloseTapped();
    EXPECT_FALSE(controller.window());
    EXPECT_FALSE(exists(capture));
    EXPECT_EQ(telemetry.events.back().properties.at("source"), "close");
}

} // namespace
} // namespace glimmerly

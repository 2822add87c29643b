#include "capture/ScreenshotOverlayWorkflow.h"

#include "capture/ScreenshotCaptureSession.h"
#include "capture/service/OverlayPresenter.h"
#include "capture/service/ScreenCaptureService.h"
#include "tests/support/FakeAlerts.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakeScreenCapture.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/FakeTelemetry.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

constexpr auto presenting = "Capture succeeded; presenting overlay";
constexpr auto discarded = "Capture finished but a newer screenshot was requested; discarded temp file";
constexpr auto failed = "ScreenCaptureKit capture failed before overlay";

/// Owns the file it shows, as the overlay does.
class FakeOverlay : public OverlayPresenter {
public:
    void presentOverlay(const std::filesystem::path& captureImageURL) override {
        closeOverlay();
        EXPECT_TRUE(std::filesystem::exists(captureImageURL));
        shown = captureImageURL;
    }
    void closeOverlay() override {
        if (!shown.empty())
            std::filesystem::remove(shown);
        shown.clear();
    }

    std::filesystem::path shown; ///< empty: nothing
};

class ScreenshotOverlayWorkflowTest : public testing::Test {
protected:
    /// Starts a capture that waits for its image, as number `held` of them.
    std::size_t startCapture() {
        screenCapture.holdsImages = true;
        workflow.requestScreenshot(ScreenshotRequestSource::hotkey);
        queue.runAll();
        return screenCapture.held.size() - 1;
    }
    void succeed(std::size_t capture) { screenCapture.held.at(capture)(screenCapture.image); }
    void fail(std::size_t capture) {
        screenCapture.held.at(capture)(failure(Error("X11", 42, "The server has gone.")));
    }

    std::vector<std::string> files() const { return namesIn(scratch.path() / "app.glimmerly.Glimmerly"); }

    ScratchDirectory scratch;
    ScopedEnvironment runtime{"XDG_RUNTIME_DIR", scratch.path().c_str()};
    LogCapture log;
    FakeMainQueue queue;
    FakeScreens screens{{FakeScreens::display({64, 48})}};
    FakeScreenCapture screenCapture{queue};
    ScreenCaptureService captureService{screens, screenCapture};
    ScreenshotCaptureSession session;
    FakeOverlay overlay;
    FakeAlerts alerts;
    FakeTelemetry telemetry;
    WallTime now{};
    ScreenshotOverlayWorkflow workflow{{.captureService = captureService,
                                        .session = session,
                                        .overlay = overlay,
                                        .alerts = alerts,
                                        .mainQueue = queue,
                                        .telemetry = telemetry,
                                        .clock = [this] { return now; }}};
};

TEST_F(ScreenshotOverlayWorkflowTest, PresentsTheCaptureAndHandsItsFileOver) {
    workflow.requestScreenshot(ScreenshotRequestSource::menubar);
    EXPECT_TRUE(screenCapture.filters.empty()) << "the job runs later";
    queue.runAll();
    EXPECT_EQ(files(), std::vector{overlay.shown.filename().string()});
    const auto lines = log.withMessage(presenting);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].level, GlimmerlyLog::Level::debug);
    EXPECT_EQ(lines[0].category, "ScreenshotWorkflow");
    EXPECT_EQ(lines[0].metadata->at("path"), overlay.shown.filename().string());
}

TEST_F(ScreenshotOverlayWorkflowTest, TellsOfEachRequestAndHowItEnded) {
    using Event = FakeTelemetry::Event;
    const auto stale = startCapture();
    workflow.requestScreenshot(ScreenshotRequestSource::menubar);
    queue.runAll();
    now += std::chrono::milliseconds(20);
    succeed(stale);
    EXPECT_EQ(std::exchange(telemetry.events, {}),
              (std::vector<Event>{{"capture_requested", {{"source", "hotkey"}}},
                                  {"capture_started", {}},
                                  {"capture_requested", {{"source", "menubar"}}},
                                  {"capture_started", {}}}))
        << "nobody is told of a capture that came too late";

    succeed(1);
    EXPECT_EQ(std::exchange(telemetry.events, {}),
              (std::vector<Event>{{"capture_succeeded",
                                   {{"duration_ms", 20},
                                    {"requested_width_px", 64},
                                    {"requested_height_px", 48},
                                    {"captured_width_px", screenCapture.image->width()},
                                    {"captured_height_px", screenCapture.image->height()},
                                    {"expected_screen_width_px", 64},
                                    {"expected_screen_height_px", 48},
                                    {"display_width_points", 64},
                                    {"display_height_points", 48},
                                    {"point_pixel_scale", 1.0}}}}));

    const auto failing = startCapture();
    telemetry.events.clear();
    alerts.onRun = [&] { now += std::chrono::hours(48); };
    fail(failing);
    EXPECT_EQ(telemetry.events,
              (std::vector<Event>{{"capture_failed",
                                   {{"duration_ms", 86'400'000}, // with the time that the alert was open
                                    {"error_domain", "X11"},
                                    {"error_code", 42}}}}));
}

TEST_F(ScreenshotOverlayWorkflowTest, ShowsOnlyTheNewestHoweverTheyFinish) {
    const auto first = startCapture();
    const auto second = startCapture();
    now += std::chrono::milliseconds(1500);
    succeed(first);
    EXPECT_TRUE(overlay.shown.empty());
    EXPECT_TRUE(files().empty());
    const auto lines = log.withMessage(discarded);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].level, GlimmerlyLog::Level::debug);
    EXPECT_EQ(lines[0].metadata->at("duration_ms"), "1500");
    EXPECT_TRUE(lines[0].metadata->at("path").starts_with("glimmerly-capture-"));
    succeed(second);
    const auto shown = overlay.shown;
    EXPECT_EQ(files(), std::vector{shown.filename().string()});

    const auto third = startCapture();
    const auto fourth = startCapture();
    succeed(fourth);
    const auto newest = overlay.shown;
    succeed(third);
    EXPECT_EQ(overlay.shown, newest);
    EXPECT_EQ(files(), std::vector{newest.filename().string()});
    EXPECT_TRUE(alerts.shown.empty());
}

TEST_F(ScreenshotOverlayWorkflowTest, ReportsAFailureInTheLogAndToTheUser) {
    fail(startCapture());
    ASSERT_EQ(alerts.shown.size(), 1U);
    EXPECT_EQ(alerts.shown[0].style, AlertStyle::warning);
    EXPECT_EQ(alerts.shown[0].messageText, "Screenshot failed");
    EXPECT_EQ(alerts.shown[0].informativeText,
              "Glimmerly could not capture the display.\n\nThe server has gone.");
    EXPECT_EQ(alerts.shown[0].buttons, std::vector<std::string>{"OK"});
    const auto lines = log.withMessage(failed);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].level, GlimmerlyLog::Level::error);
    EXPECT_EQ(lines[0].category, "ScreenshotWorkflow");
    EXPECT_TRUE(lines[0].metadata->at("path").starts_with("glimmerly-capture-"));
    EXPECT_EQ(lines[0].metadata->at("errorDomain"), "X11");
    EXPECT_EQ(lines[0].errorSummary, "The server has gone.");
    EXPECT_TRUE(files().empty());
    EXPECT_TRUE(overlay.shown.empty());
}

TEST_F(ScreenshotOverlayWorkflowTest, AFailureOfAnOlderRequestIsReportedAndLeavesTheNewerAlone) {
    const auto older = startCapture();
    const auto newer = startCapture();
    fail(older);
    EXPECT_EQ(alerts.shown.size(), 1U);
    succeed(newer);
    EXPECT_FALSE(overlay.shown.empty());
}

TEST_F(ScreenshotOverlayWorkflowTest, AFailureOfTheCurrentRequestEndsItsSession) {
    const auto older = startCapture();
    fail(startCapture());
    succeed(older);
    EXPECT_TRUE(overlay.shown.empty());
    EXPECT_TRUE(files().empty());
}

} // namespace
} // namespace glimmerly

#include "capture/service/ScreenCaptureService.h"

#include "capture/service/ScreenCaptureServiceError.h"
#include "platform/png/PngDecoder.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakeScreenCapture.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace glimmerly {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

class ScreenCaptureServiceTest : public testing::Test {
protected:
    /// Captures to `destination` and runs everything that leads to.
    Result<void> capture(const std::filesystem::path& destination) {
        std::optional<Result<void>> outcome;
        service.capture(destination, [&](Result<void> result) {
            EXPECT_FALSE(outcome) << "completed twice";
            outcome = std::move(result);
        });
        queue.runAll();
        EXPECT_TRUE(outcome);
        return *outcome;
    }
    Result<void> capture() { return capture(file); }

    /// Expects a failed capture that logged `stage` once, with `error`, and left no file.
    void expectFailure(const std::string& stage, const Error& error) {
        const LogCapture log;
        const auto outcome = capture();
        ASSERT_FALSE(outcome) << stage;
        EXPECT_EQ(outcome.error().domain(), error.domain());
        EXPECT_EQ(outcome.error().code(), error.code());
        ASSERT_EQ(log.records().size(), 1U);
        const LogRecord line = log.records().front();
        EXPECT_EQ(line.level, GlimmerlyLog::Level::error);
        EXPECT_EQ(line.category, "ScreenCapture");
        EXPECT_EQ(line.message, "Screenshot capture aborted");
        EXPECT_EQ(line.metadata->at("stage"), stage);
        EXPECT_EQ(line.metadata->at("errorCode"), std::to_string(error.code()));
        EXPECT_EQ(line.errorSummary, outcome.error().description());
        EXPECT_TRUE(directory.names().empty());
    }

    FakeMainQueue queue;
    FakeScreens screens{{FakeScreens::display({64, 48})}};
    FakeScreenCapture screenCapture{queue};
    ScreenCaptureService service{screens, screenCapture};
    ScratchDirectory directory;
    std::filesystem::path file = directory.path() / "capture.png";
};

TEST_F(ScreenCaptureServiceTest, WritesThePictureForTheUserAloneAndRecordsWhatItSaw) {
    const ScopedUmask open(0);
    screens.all = {FakeScreens::display({96, 72}, 1.5, 7)};
    screens.all[0].frame = {0, 0, 64, 48};
    screenCapture.displays = std::vector{ShareableDisplay{3, 9, 9}, ShareableDisplay{7, 64, 48}};
    screenCapture.filter = {.displayID = 0, .pointPixelScale = 1.5F, .contentRect = {0, 0, 64, 48}};
    Bitmap picture = FakeScreenCapture::filled({95, 71});
    picture.row(3)[4] = 0x00aabbcc; // a server of depth 24 leaves alpha as it likes
    screenCapture.image = picture;
    EXPECT_FALSE(service.lastCaptureDiagnostics());

    const LogCapture log;
    ASSERT_TRUE(capture());

    picture.row(3)[4] = 0xffaabbcc;
    EXPECT_EQ(PngDecoder::open(file)->decode().value(), picture);
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_TRUE(log.records().empty());
    EXPECT_EQ(service.lastCaptureDiagnostics(), (CaptureDiagnostics{96, 72, 95, 71, 96, 72, 64, 48, 1.5}));
    ASSERT_EQ(screenCapture.filters.size(), 1U);
    EXPECT_EQ(screenCapture.filters[0].displayID, 7U);
    const CaptureConfiguration& asked = screenCapture.configurations.at(0);
    EXPECT_EQ(asked.width, 96);
    EXPECT_EQ(asked.height, 72);
    EXPECT_EQ(asked.resolution, CaptureResolution::best);
    EXPECT_EQ(asked.scaling, CaptureScaling::off);
    EXPECT_EQ(asked.cursor, CaptureCursor::hidden);
    EXPECT_EQ(asked.displayShadows, CaptureShadows::kept);
    EXPECT_EQ(asked.windowShadows, CaptureShadows::kept);
}

TEST_F(ScreenCaptureServiceTest, AsksForWholePixelsAndAtLeastOne) {
    const struct {
        Size points;
        float scale;
        PixelSize expected;
    } cases[] = {
        {{0.3, 0.3}, 1, {1, 1}},
        {{0, -5}, 2, {1, 1}},
        {{2.5, 2.4}, 1, {3, 2}},
        {{1.25, 3}, 2, {3, 6}},
        {{1462.857142857, 800}, 1.75F, {2560, 1400}},
    };
    for (const auto& [points, scale, expected] : cases) {
        screenCapture.filter.contentRect = {0, 0, points.width, points.height};
        screenCapture.filter.pointPixelScale = scale;
        ASSERT_TRUE(capture());
        EXPECT_EQ(screenCapture.configurations.back().width, expected.width) << points.width;
        EXPECT_EQ(screenCapture.configurations.back().height, expected.height) << points.height;
    }
}

TEST_F(ScreenCaptureServiceTest, FailsEachStageWithItsErrorAndOneLine) {
    const Error ofThePlatform("X11", 42, "words");
    const Error noDisplay = ScreenCaptureServiceError::noMatchingDisplay;
    EXPECT_EQ(noDisplay.domain(), "Glimmerly.ScreenCaptureServiceError");

    const auto good = screens.all;
    screens.all[0].displayID.reset();
    screens.main.reset();
    expectFailure("NSScreen_deviceDescription_screenNumber", noDisplay);
    screens.all.clear();
    expectFailure("NSScreen_deviceDescription_screenNumber", noDisplay);
    screens.all = good;

    screenCapture.displays = failure(ofThePlatform);
    expectFailure("SCShareableContent_fetch", ofThePlatform);
    for (const auto& none : {std::vector<ShareableDisplay>{}, std::vector{ShareableDisplay{2, 64, 48}}}) {
        screenCapture.displays = none;
        expectFailure("match_display_targetID_to_SCDisplay", noDisplay);
    }
    screenCapture.displays = std::vector{ShareableDisplay{1, 64, 48}};

    screenCapture.image = failure(ofThePlatform);
    expectFailure("SCScreenshotManager_captureImage", ofThePlatform);
    screenCapture.image = Bitmap();
    expectFailure("SCScreenshotManager_captureImage", Error::posix(ENODATA, ""));
    screenCapture.filter.contentRect.width = notANumber;
    expectFailure("SCScreenshotManager_captureImage", Error::posix(ERANGE, ""));
    screenCapture.filter.contentRect.width = 64;
    EXPECT_FALSE(service.lastCaptureDiagnostics());

    Bitmap::Pixel pixel = 0;
    screenCapture.image = Bitmap({70'000, 1}, 0, &pixel, nullptr);
    expectFailure("NSBitmap_png_encode", ScreenCaptureServiceError::pngEncodingFailed);
    ASSERT_TRUE(service.lastCaptureDiagnostics());
    EXPECT_EQ(service.lastCaptureDiagnostics()->capturedWidthPx, 70'000);

    screenCapture.image = FakeScreenCapture::filled({64, 48});
    file = directory.path() / "missing" / "capture.png";
    expectFailure("Atomic_write_png", Error::posix(ENOENT, ""));
}

TEST_F(ScreenCaptureServiceTest, FollowsNoPlantedLink) {
    const ScratchDirectory elsewhere;
    std::filesystem::create_symlink(elsewhere.path() / "victim", file);
    ASSERT_TRUE(capture());
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(file)));
    EXPECT_TRUE(elsewhere.names().empty());

    std::filesystem::create_symlink(elsewhere.path(), directory.path() / "link");
    EXPECT_FALSE(capture(directory.path() / "link" / "capture.png"));
    EXPECT_TRUE(elsewhere.names().empty());

    std::filesystem::permissions(elsewhere.path(), std::filesystem::perms(0777));
    EXPECT_FALSE(capture(elsewhere.path() / "capture.png"));
    EXPECT_TRUE(elsewhere.names().empty());
}

TEST_F(ScreenCaptureServiceTest, SurvivesScreensOfNoSize) {
    screens.all[0].frame = {0, 0, notANumber, std::numeric_limits<double>::infinity()};
    screens.main = screens.all[0];
    ASSERT_TRUE(capture());
    EXPECT_EQ(service.lastCaptureDiagnostics()->expectedScreenWidthPx, 0);
    EXPECT_EQ(service.lastCaptureDiagnostics()->expectedScreenHeightPx, 0);
}

} // namespace
} // namespace glimmerly

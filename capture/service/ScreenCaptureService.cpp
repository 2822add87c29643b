#include "capture/service/ScreenCaptureService.h"

#include "capture/service/CapturedPicture.h"
#include "capture/service/ScreenCaptureServiceError.h"
#include "capture/service/TargetScreen.h"
#include "diagnostics/GlimmerlyLog.h"
#include "platform/Platform.h"
#include "platform/files/AtomicFile.h"
#include "platform/png/StoredPng.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <utility>

namespace glimmerly {

namespace {

namespace stage {
constexpr std::string_view displayNumber = "NSScreen_deviceDescription_screenNumber";
constexpr std::string_view fetch = "SCShareableContent_fetch";
constexpr std::string_view match = "match_display_targetID_to_SCDisplay";
constexpr std::string_view capture = "SCScreenshotManager_captureImage";
constexpr std::string_view encode = "NSBitmap_png_encode";
constexpr std::string_view write = "Atomic_write_png";
} // namespace stage

/// `points` at `scale`, to the nearest whole pixel, halves away from zero; none when that is no number that
/// a picture's side could have.
std::optional<std::int64_t> pixels(double points, double scale) {
    const double rounded = std::round(points * scale);
    constexpr double limit = 1e9;
    if (!(std::abs(rounded) <= limit))
        return std::nullopt;
    return static_cast<std::int64_t>(rounded);
}

std::optional<CaptureConfiguration> configurationFor(const ContentFilter& filter) {
    const auto width = pixels(filter.contentRect.width, filter.pointPixelScale);
    const auto height = pixels(filter.contentRect.height, filter.pointPixelScale);
    if (!width || !height)
        return std::nullopt;
    return CaptureConfiguration{.width = std::max<std::int64_t>(*width, 1),
                                .height = std::max<std::int64_t>(*height, 1),
                                .resolution = CaptureResolution::best,
                                .scaling = CaptureScaling::off,
                                .cursor = CaptureCursor::hidden,
                                .displayShadows = CaptureShadows::kept,
                                .windowShadows = CaptureShadows::kept};
}

} // namespace

ScreenCaptureService::ScreenCaptureService(const Screens& screens, ScreenCapture& screenCapture)
    : screens_(screens), screenCapture_(screenCapture), self_(std::make_shared<ScreenCaptureService*>(this)) {
}

ScreenCaptureService& ScreenCaptureService::shared() {
    static ScreenCaptureService& instance =
        *new ScreenCaptureService(Platform::current().screens, Platform::current().screenCapture);
    return instance;
}

void ScreenCaptureService::capture(const std::filesystem::path& fileURL, Completion completion) {
    const auto job = std::make_shared<Job>();
    job->fileURL = fileURL;
    job->completion = std::move(completion);
    const auto screen = targetScreen(screens_);
    if (!screen || !screen->displayID)
        return fail(*job, stage::displayNumber, ScreenCaptureServiceError::noMatchingDisplay);
    job->screen = *screen;
    fetchDisplays(job, *screen->displayID);
}

void ScreenCaptureService::fetchDisplays(const JobRef& job, std::uint32_t displayID) {
    screenCapture_.fetchShareableDisplays([weakSelf = std::weak_ptr(self_), job, displayID](auto displays) {
        const auto self = weakSelf.lock();
        if (!self)
            return;
        if (!displays)
            return fail(*job, stage::fetch, displays.error());
        const auto found = std::ranges::find(*displays, displayID, &ShareableDisplay::displayID);
        if (found == displays->end())
            return fail(*job, stage::match, ScreenCaptureServiceError::noMatchingDisplay);
        job->display = *found;
        (*self)->captureImage(job);
    });
}

void ScreenCaptureService::captureImage(const JobRef& job) {
    job->filter = screenCapture_.contentFilter(job->display);
    const auto configuration = configurationFor(job->filter);
    if (!configuration)
        return fail(*job, stage::capture, Error::posix(ERANGE, "The size of the display"));
    job->configuration = *configuration;
    screenCapture_.captureImage(
        job->filter, *configuration, [weakSelf = std::weak_ptr(self_), job](auto image) {
            const auto self = weakSelf.lock();
            if (!self)
                return;
            if (!image)
                return fail(*job, stage::capture, image.error());
            if (image->isNull())
                return fail(*job, stage::capture, Error::posix(ENODATA, "The picture of the display"));
            (*self)->recordDiagnostics(*job, *image);
            (*self)->save(job, *image);
        });
}

void ScreenCaptureService::recordDiagnostics(const Job& job, const Bitmap& image) {
    const Screen& screen = job.screen;
    lastCaptureDiagnostics_ = CaptureDiagnostics{
        .requestedWidthPx = job.configuration.width,
        .requestedHeightPx = job.configuration.height,
        .capturedWidthPx = image.width(),
        .capturedHeightPx = image.height(),
        .expectedScreenWidthPx = pixels(screen.frame.width, screen.backingScale).value_or(0),
        .expectedScreenHeightPx = pixels(screen.frame.height, screen.backingScale).value_or(0),
        .displayWidthPoints = job.display.width,
        .displayHeightPoints = job.display.height,
        .pointPixelScale = job.filter.pointPixelScale};
}

void ScreenCaptureService::save(const JobRef& job, const Bitmap& image) {
    const auto png = StoredPng::of(image);
    if (!png)
        return fail(*job, stage::encode, ScreenCaptureServiceError::pngEncodingFailed);
    const auto written =
        writeFileAtomically(job->fileURL, [&png](const FileDescriptor& file) { return png->writeTo(file); });
    if (!written)
        return fail(*job, stage::write, written.error());
    const CapturedPicture atHand(job->fileURL, image);
    job->completion({});
}

void ScreenCaptureService::fail(const Job& job, std::string_view stage, const Error& error) {
    GlimmerlyLog::error(log_category::screenCapture, "Screenshot capture aborted",
                        {{"stage", std::string(stage)}}, error);
    job.completion(failure(error));
}

} // namespace glimmerly

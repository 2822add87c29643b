#include "capture/ScreenshotOverlayWorkflow.h"

#include "capture/ScreenshotCaptureSession.h"
#include "capture/service/CaptureFile.h"
#include "capture/service/OverlayPresenter.h"
#include "capture/service/ScreenCaptureService.h"
#include "diagnostics/GlimmerlyLog.h"
#include "platform/Alerts.h"
#include "platform/MainQueue.h"
#include "telemetry/Telemetry.h"

#include <system_error>
#include <utility>

namespace glimmerly {

namespace {

std::string fileName(const std::filesystem::path& fileURL) {
    return fileURL.filename().string();
}

std::string_view telemetrySpelling(ScreenshotRequestSource source) {
    return source == ScreenshotRequestSource::hotkey ? "hotkey" : "menubar";
}

TelemetryProperties propertiesOf(const std::optional<CaptureDiagnostics>& sizes) {
    if (!sizes)
        return {};
    return {{"requested_width_px", sizes->requestedWidthPx},
            {"requested_height_px", sizes->requestedHeightPx},
            {"captured_width_px", sizes->capturedWidthPx},
            {"captured_height_px", sizes->capturedHeightPx},
            {"expected_screen_width_px", sizes->expectedScreenWidthPx},
            {"expected_screen_height_px", sizes->expectedScreenHeightPx},
            {"display_width_points", sizes->displayWidthPoints},
            {"display_height_points", sizes->displayHeightPoints},
            {"point_pixel_scale", sizes->pointPixelScale}};
}

} // namespace

ScreenshotOverlayWorkflow::ScreenshotOverlayWorkflow(ScreenshotWorkflowServices services)
    : services_(std::move(services)), self_(std::make_shared<ScreenshotOverlayWorkflow*>(this)) {}

void ScreenshotOverlayWorkflow::requestScreenshot(ScreenshotRequestSource source) {
    services_.telemetry.track(telemetry_event::captureRequested, {{"source", telemetrySpelling(source)}});
    services_.overlay.closeOverlay();
    services_.mainQueue.post([weakSelf = std::weak_ptr(self_), fileURL = makeCaptureFileURL()] {
        if (const auto self = weakSelf.lock())
            (*self)->run(fileURL);
    });
}

void ScreenshotOverlayWorkflow::run(const std::filesystem::path& fileURL) {
    const Request request{fileURL, Uuid::generate(), services_.clock()};
    services_.session.beginSession(request.id);
    services_.telemetry.track(telemetry_event::captureStarted);
    services_.captureService.capture(fileURL,
                                     [weakSelf = std::weak_ptr(self_), request](const Result<void>& outcome) {
                                         if (const auto self = weakSelf.lock())
                                             (*self)->finish(request, outcome);
                                     });
}

void ScreenshotOverlayWorkflow::finish(const Request& request, const Result<void>& outcome) {
    if (!outcome)
        return report(request, outcome.error());
    const auto duration = durationOf(request);
    if (services_.session.isCurrent(request.id))
        succeed(request, duration);
    else
        discard(request, duration);
}

std::int64_t ScreenshotOverlayWorkflow::durationOf(const Request& request) const {
    return clampedMilliseconds(request.start, services_.clock());
}

void ScreenshotOverlayWorkflow::succeed(const Request& request, std::int64_t duration) {
    auto properties = propertiesOf(services_.captureService.lastCaptureDiagnostics());
    properties.emplace("duration_ms", duration);
    services_.telemetry.track(telemetry_event::captureSucceeded, std::move(properties));
    GlimmerlyLog::debug(log_category::screenshotWorkflow, "Capture succeeded; presenting overlay",
                        {{"path", fileName(request.fileURL)}});
    services_.overlay.presentOverlay(request.fileURL);
}

void ScreenshotOverlayWorkflow::discard(const Request& request, std::int64_t duration) {
    std::error_code ignored;
    std::filesystem::remove(request.fileURL, ignored);
    GlimmerlyLog::debug(log_category::screenshotWorkflow,
                        "Capture finished but a newer screenshot was requested; discarded temp file",
                        {{"duration_ms", std::to_string(duration)}, {"path", fileName(request.fileURL)}});
}

void ScreenshotOverlayWorkflow::report(const Request& request, const Error& error) {
    services_.session.endSessionIfCurrent(request.id);
    GlimmerlyLog::error(log_category::screenshotWorkflow, "ScreenCaptureKit capture failed before overlay",
                        {{"path", fileName(request.fileURL)}}, error);
    services_.alerts.runModal(
        {.style = AlertStyle::warning,
         .messageText = "Screenshot failed",
         .informativeText = "Glimmerly could not capture the display.\n\n" + error.description(),
         .buttons = {"OK"}});
    services_.telemetry.track(telemetry_event::captureFailed, {{"duration_ms", durationOf(request)},
                                                               {"error_domain", error.domain()},
                                                               {"error_code", error.code()}});
}

} // namespace glimmerly

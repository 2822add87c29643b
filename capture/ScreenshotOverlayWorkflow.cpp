#include "capture/ScreenshotOverlayWorkflow.h"

#include "capture/OverlayPresenter.h"
#include "capture/ScreenshotCaptureSession.h"
#include "capture/service/CaptureFile.h"
#include "capture/service/ScreenCaptureService.h"
#include "diagnostics/GlimmerlyLog.h"
#include "platform/Alerts.h"
#include "platform/MainQueue.h"

#include <system_error>
#include <utility>

namespace glimmerly {

namespace {

std::string fileName(const std::filesystem::path& fileURL) {
    return fileURL.filename().string();
}

} // namespace

ScreenshotOverlayWorkflow::ScreenshotOverlayWorkflow(ScreenshotWorkflowServices services)
    : services_(std::move(services)), self_(std::make_shared<ScreenshotOverlayWorkflow*>(this)) {}

void ScreenshotOverlayWorkflow::requestScreenshot(ScreenshotRequestSource) {
    services_.overlay.closeOverlay();
    services_.mainQueue.post([weakSelf = std::weak_ptr(self_), fileURL = makeCaptureFileURL()] {
        if (const auto self = weakSelf.lock())
            (*self)->run(fileURL);
    });
}

void ScreenshotOverlayWorkflow::run(const std::filesystem::path& fileURL) {
    const Request request{fileURL, Uuid::generate(), services_.clock()};
    services_.session.beginSession(request.id);
    services_.captureService.capture(fileURL,
                                     [weakSelf = std::weak_ptr(self_), request](const Result<void>& outcome) {
                                         if (const auto self = weakSelf.lock())
                                             (*self)->finish(request, outcome);
                                     });
}

void ScreenshotOverlayWorkflow::finish(const Request& request, const Result<void>& outcome) {
    if (!outcome)
        return report(request, outcome.error());
    if (!services_.session.isCurrent(request.id))
        return discard(request);
    GlimmerlyLog::debug(log_category::screenshotWorkflow, "Capture succeeded; presenting overlay",
                        {{"path", fileName(request.fileURL)}});
    services_.overlay.presentOverlay(request.fileURL);
}

void ScreenshotOverlayWorkflow::discard(const Request& request) const {
    const auto duration = clampedMilliseconds(request.start, services_.clock());
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
}

} // namespace glimmerly

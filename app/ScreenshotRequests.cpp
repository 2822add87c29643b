#include "app/ScreenshotRequests.h"

#include "capture/ScreenshotCaptureSession.h"
#include "capture/ScreenshotOverlayWorkflow.h"
#include "capture/service/ScreenCaptureService.h"
#include "overlay/ScreenshotOverlayController.h"
#include "platform/Platform.h"
#include "telemetry/TelemetrySink.h"

namespace glimmerly {

namespace {

ScreenshotOverlayWorkflow& sharedWorkflow() {
    static auto* const workflow =
        new ScreenshotOverlayWorkflow({.captureService = ScreenCaptureService::shared(),
                                       .session = ScreenshotCaptureSession::shared(),
                                       .overlay = ScreenshotOverlayController::shared(),
                                       .alerts = Platform::current().alerts,
                                       .mainQueue = Platform::current().mainQueue,
                                       .telemetry = TelemetrySink::shared()});
    return *workflow;
}

} // namespace

void requestScreenshot(ScreenshotRequestSource source) {
    sharedWorkflow().requestScreenshot(source);
}

} // namespace glimmerly

#include "app/ScreenshotRequests.h"

#include "capture/OverlayPresenter.h"
#include "capture/ScreenshotCaptureSession.h"
#include "capture/ScreenshotOverlayWorkflow.h"
#include "capture/service/ScreenCaptureService.h"
#include "overlay/ScreenshotOverlayController.h"
#include "platform/Platform.h"

namespace glimmerly {

namespace {

/// Leads the workflow to the overlay, which it does not link.
class SharedOverlay : public OverlayPresenter {
public:
    void presentOverlay(const std::filesystem::path& captureImageURL) override {
        ScreenshotOverlayController::shared().presentOverlay(captureImageURL);
    }
    void closeOverlay() override { ScreenshotOverlayController::shared().closeOverlay(); }
};

ScreenshotOverlayWorkflow& sharedWorkflow() {
    static auto* const workflow =
        new ScreenshotOverlayWorkflow({.captureService = ScreenCaptureService::shared(),
                                       .session = ScreenshotCaptureSession::shared(),
                                       .overlay = *new SharedOverlay,
                                       .alerts = Platform::current().alerts,
                                       .mainQueue = Platform::current().mainQueue});
    return *workflow;
}

} // namespace

void requestScreenshot(ScreenshotRequestSource source) {
    sharedWorkflow().requestScreenshot(source);
}

} // namespace glimmerly

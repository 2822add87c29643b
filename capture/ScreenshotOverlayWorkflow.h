#pragma once

#include "base/Clock.h"
#include "base/Result.h"
#include "base/Uuid.h"
#include "capture/ScreenshotRequestSource.h"

#include <cstdint>
#include <filesystem>
#include <memory>

namespace glimmerly {

class Alerts;
class MainQueue;
class OverlayPresenter;
class ScreenCaptureService;
class ScreenshotCaptureSession;
class Telemetry;

/// What the workflow works with.
struct ScreenshotWorkflowServices {
    ScreenCaptureService& captureService;
    ScreenshotCaptureSession& session;
    OverlayPresenter& overlay;
    Alerts& alerts;
    MainQueue& mainQueue;
    Telemetry& telemetry;
    WallClock clock = systemClock();
};

/// Turns a screenshot request into an open overlay or an alert. Requests may overlap: only the newest one's
/// capture is shown. Main thread only.
class ScreenshotOverlayWorkflow {
public:
    explicit ScreenshotOverlayWorkflow(ScreenshotWorkflowServices services);

    /// Closes any open overlay and starts a capture; returns at once.
    void requestScreenshot(ScreenshotRequestSource source);

private:
    struct Request {
        std::filesystem::path fileURL;
        Uuid id;
        WallTime start;
    };

    void succeed(const Request& request, std::int64_t duration);
    void run(const std::filesystem::path& fileURL);
    void finish(const Request& request, const Result<void>& outcome);
    [[nodiscard]] std::int64_t durationOf(const Request& request) const;
    static void discard(const Request& request, std::int64_t duration);
    void report(const Request& request, const Error& error);

    ScreenshotWorkflowServices services_;
    /// Held weakly by what outlives the workflow: queued tasks and completions.
    std::shared_ptr<ScreenshotOverlayWorkflow*> self_;
};

} // namespace glimmerly

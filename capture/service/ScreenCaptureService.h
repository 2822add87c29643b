#pragma once

#include "base/Result.h"
#include "capture/service/CaptureDiagnostics.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace glimmerly {

/// Captures the display under the mouse at its native pixel size into a PNG file. Main thread only; several
/// captures may be under way at a time.
class ScreenCaptureService {
public:
    using Completion = std::function<void(Result<void>)>;

    ScreenCaptureService(const Screens& screens, ScreenCapture& screenCapture);

    [[nodiscard]] static ScreenCaptureService& shared();

    /// Writes a capture to `fileURL`, readable by the user alone, and then calls `completion`: with success
    /// when the file is there whole, else with an error, which has been logged, and no file. May call it
    /// before it returns. A service that has gone meanwhile does neither.
    void capture(const std::filesystem::path& fileURL, Completion completion);

    /// The sizes seen by the last capture that received an image, whatever became of it; none before.
    [[nodiscard]] const std::optional<CaptureDiagnostics>& lastCaptureDiagnostics() const {
        return lastCaptureDiagnostics_;
    }

private:
    /// One capture on its way through the stages.
    struct Job {
        std::filesystem::path fileURL;
        Completion completion;
        Screen screen;
        ShareableDisplay display;
        ContentFilter filter;
        CaptureConfiguration configuration;
    };
    using JobRef = std::shared_ptr<Job>;

    void fetchDisplays(const JobRef& job, std::uint32_t displayID);
    void captureImage(const JobRef& job);
    void save(const JobRef& job, const Bitmap& image);
    void recordDiagnostics(const Job& job, const Bitmap& image);
    static void fail(const Job& job, std::string_view stage, const Error& error);

    const Screens& screens_;
    ScreenCapture& screenCapture_;
    std::optional<CaptureDiagnostics> lastCaptureDiagnostics_;
    /// Held weakly by the handlers that the platform keeps.
    std::shared_ptr<ScreenCaptureService*> self_;
};

} // namespace glimmerly

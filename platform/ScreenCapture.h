#pragma once

#include "base/Bitmap.h"
#include "base/Geometry.h"
#include "base/Result.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace glimmerly {

/// A display that may be captured.
struct ShareableDisplay {
    std::uint32_t displayID = 0;
    std::int64_t width = 0;  ///< points
    std::int64_t height = 0; ///< points
};

/// What a capture looks at: one display with every window on it.
struct ContentFilter {
    std::uint32_t displayID = 0;
    float pointPixelScale = 1; ///< pixels per point
    Rect contentRect;          ///< points
};

enum class CaptureResolution { automatic = 0, best = 1, nominal = 2 };
enum class CaptureScaling { off, toFit };
enum class CaptureCursor { hidden, shown };
enum class CaptureShadows { kept, ignored };

struct CaptureConfiguration {
    std::int64_t width = 0;  ///< pixels
    std::int64_t height = 0; ///< pixels
    CaptureResolution resolution = CaptureResolution::best;
    CaptureScaling scaling = CaptureScaling::off;
    CaptureCursor cursor = CaptureCursor::hidden;
    CaptureShadows displayShadows = CaptureShadows::kept;
    CaptureShadows windowShadows = CaptureShadows::kept;
};

/// Takes pictures of displays. Every handler is called once, on the main thread, never from within the call
/// that was given it.
class ScreenCapture {
public:
    virtual ~ScreenCapture() = default;

    virtual void
    fetchShareableDisplays(std::function<void(Result<std::vector<ShareableDisplay>>)> handler) = 0;
    [[nodiscard]] virtual ContentFilter contentFilter(const ShareableDisplay& display) const = 0;
    virtual void captureImage(const ContentFilter& filter, const CaptureConfiguration& configuration,
                              std::function<void(Result<Bitmap>)> handler) = 0;
};

} // namespace glimmerly

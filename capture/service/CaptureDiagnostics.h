#pragma once

#include <cstdint>

namespace glimmerly {

/// The sizes seen by one capture that received an image.
struct CaptureDiagnostics {
    std::int64_t requestedWidthPx = 0;
    std::int64_t requestedHeightPx = 0;
    std::int64_t capturedWidthPx = 0;
    std::int64_t capturedHeightPx = 0;
    std::int64_t expectedScreenWidthPx = 0; ///< the screen's frame times its backing scale
    std::int64_t expectedScreenHeightPx = 0;
    std::int64_t displayWidthPoints = 0;
    std::int64_t displayHeightPoints = 0;
    double pointPixelScale = 0; ///< pixels per point, widened from single precision

    bool operator==(const CaptureDiagnostics&) const = default;
};

} // namespace glimmerly

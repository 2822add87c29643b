#pragma once

#include "overlay/backing/OverlayImage.h"
#include "platform/Screens.h"

#include <filesystem>
#include <optional>

namespace glimmerly {

/// The two pictures made of a capture file. They share their pixels: the expanded one has rows more, which
/// lie in memory before and after those of the capture.
struct OverlayCaptureBackingImage {
    /// The capture as it is, sized for the target screen's backing scale.
    std::optional<OverlayImage> backgroundImage;
    /// The capture with edge rows repeated below and above, as tall as the canvas.
    std::optional<OverlayImage> backgroundImageExpanded;

    /// Reads the capture file at `fileURL` for a canvas `heightPoints` tall on the target screen of
    /// `screens`. What cannot be had is none, with a warning in the log.
    [[nodiscard]] static OverlayCaptureBackingImage load(const std::filesystem::path& fileURL,
                                                         double heightPoints, const Screens& screens);
};

} // namespace glimmerly

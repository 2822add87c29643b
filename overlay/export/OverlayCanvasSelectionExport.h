#pragma once

#include "overlay/backing/OverlayImage.h"
#include "overlay/drawing/AnnotationDrawing.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <span>

namespace glimmerly {

/// What the canvas holds at the moment of an export.
struct SelectionExport {
    std::optional<Rect> selection;                    ///< canvas points
    std::optional<OverlayImage> image;                ///< shown centred in `bounds` at its own size
    std::span<const OverlayAnnotation> annotations{}; ///< in list order; later ones paint over earlier ones
    /// Draws a text as its view shows it; one that has no view is left out.
    std::function<void(QPainter&, const OverlayAnnotation&, const PixelMapping&)> drawText{};
    double minimumSize = 0; ///< least width and height of an exported selection, points
    Rect bounds;            ///< of the canvas
};

/// The selected part of the picture at its full resolution: over the same pixels when there are no
/// annotations, else a copy with the annotations drawn in. None when there is nothing to export.
[[nodiscard]] std::optional<Bitmap> croppedSelectionImage(const SelectionExport& source);

/// Every pixel of `image` that the standardised `selection` touches; none when they have no more than half a
/// point in common in either direction.
[[nodiscard]] std::optional<PixelRect> pixelCropRect(const OverlayImage& image, const Rect& selection,
                                                     const Rect& bounds);

/// Saves `bitmap` at `fileURL`, in one step, as PNG. False when that fails; a failure to write is logged.
[[nodiscard]] bool writeCroppedImagePNG(const Bitmap& bitmap, const std::filesystem::path& fileURL);

} // namespace glimmerly

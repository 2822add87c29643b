#include "overlay/OverlayCanvasSelectionExport.h"

#include "diagnostics/GlimmerlyLog.h"
#include "overlay/model/CanvasPixelGrid.h"
#include "overlay/model/RectResizing.h"
#include "platform/files/AtomicFile.h"
#include "platform/png/PngEncoder.h"

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

/// A picture and a selection that overlap by this much or less, in points, have nothing in common.
constexpr double negligibleOverlap = 0.5;

struct PixelSpan {
    int low;
    int high;
};

/// The pixels, out of `count` over a length of `extent` points, that the stretch from `start` to `end` points
/// touches: rounded outwards, at least one.
PixelSpan touchedPixels(double start, double end, double extent, int count) {
    const double low = std::floor(start / extent * count + pixelTolerance);
    const double high = std::ceil(end / extent * count - pixelTolerance);
    const int first = static_cast<int>(std::clamp(low, 0.0, count - 1.0));
    const int last = static_cast<int>(std::clamp(high, first + 1.0, static_cast<double>(count)));
    return {first, last};
}

} // namespace

std::optional<Bitmap> croppedSelectionImage(const SelectionExport& source) {
    if (!source.selection || !source.image || isSmallerThan(*source.selection, source.minimumSize))
        return std::nullopt;
    const auto crop = pixelCropRect(*source.image, source.selection->standardized(), source.bounds);
    if (!crop)
        return std::nullopt;
    return source.image->bitmap.view(*crop);
}

std::optional<PixelRect> pixelCropRect(const OverlayImage& image, const Rect& selection, const Rect& bounds) {
    const auto pixels = imagePixelSize(image);
    if (!pixels || !(image.size.width > 0 && image.size.height > 0))
        return std::nullopt;
    const Rect area = centredRect(image.size, bounds);
    const Rect common = selection.intersected(area);
    if (!(common.width > negligibleOverlap && common.height > negligibleOverlap))
        return std::nullopt;
    const auto columns =
        touchedPixels(common.minX() - area.minX(), common.maxX() - area.minX(), area.width, pixels->width);
    const auto rowsFromBottom =
        touchedPixels(common.minY() - area.minY(), common.maxY() - area.minY(), area.height, pixels->height);
    return PixelRect{columns.low, pixels->height - rowsFromBottom.high, columns.high - columns.low,
                     rowsFromBottom.high - rowsFromBottom.low};
}

bool writeCroppedImagePNG(const Bitmap& bitmap, const std::filesystem::path& fileURL) {
    const auto png = encodePng(bitmap, PngProfile::compact);
    if (!png)
        return false;
    const auto written = writeFileAtomically(fileURL, png->span(), Destination::chosenByUser);
    if (!written) {
        GlimmerlyLog::error(log_category::overlayExport, "Atomic PNG write failed from overlay save",
                            {{"url", fileURL.filename().string()}}, written.error());
        return false;
    }
    return true;
}

} // namespace glimmerly

#include "overlay/export/OverlayCanvasSelectionExport.h"

#include "diagnostics/GlimmerlyLog.h"
#include "overlay/model/CanvasPixelGrid.h"
#include "overlay/model/RectResizing.h"
#include "platform/files/AtomicFile.h"
#include "platform/png/PngEncoder.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <new>

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

/// How canvas points lie on the pixels of `crop`.
PixelMapping cropMapping(const SelectionExport& source, const PixelRect& crop) {
    const Rect area = centredRect(source.image->size, source.bounds);
    const double scale = source.image->bitmap.width() / area.width;
    return {{area.minX() + crop.x / scale, area.maxY() - crop.y / scale}, scale};
}

/// Null when there is no memory for it.
Bitmap copied(const Bitmap& bitmap) {
    try {
        Bitmap copy(bitmap.size());
        for (int y = 0; y < bitmap.height(); ++y)
            std::ranges::copy(bitmap.row(y), copy.row(y).begin());
        return copy;
    } catch (const std::bad_alloc&) {
        return {};
    }
}

Bitmap renderAnnotationsIntoCrop(const Bitmap& crop, const SelectionExport& source,
                                 const PixelMapping& mapping) {
    Bitmap output = copied(crop);
    if (output.isNull())
        return crop; // better without annotations than not at all
    QImage canvas(reinterpret_cast<uchar*>(output.row(0).data()), output.width(), output.height(),
                  static_cast<qsizetype>(output.bytesPerRow()), QImage::Format_RGB32);
    QPainter painter(&canvas);
    for (const auto& annotation : source.annotations) {
        if (!std::holds_alternative<TextLabel>(annotation.kind))
            drawShape({painter, canvas.rect()}, annotation, mapping, annotation.color.alpha);
        else if (source.drawText)
            source.drawText(painter, annotation, mapping);
    }
    return output;
}

} // namespace

std::optional<Bitmap> croppedSelectionImage(const SelectionExport& source) {
    if (!source.selection || !source.image || isSmallerThan(*source.selection, source.minimumSize))
        return std::nullopt;
    const auto crop = pixelCropRect(*source.image, source.selection->standardized(), source.bounds);
    if (!crop)
        return std::nullopt;
    Bitmap image = source.image->bitmap.view(*crop);
    if (source.annotations.empty())
        return image;
    return renderAnnotationsIntoCrop(image, source, cropMapping(source, *crop));
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

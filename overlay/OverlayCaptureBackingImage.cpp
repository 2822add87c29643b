#include "overlay/OverlayCaptureBackingImage.h"

#include "base/Overhang.h"
#include "capture/service/TargetScreen.h"
#include "diagnostics/GlimmerlyLog.h"
#include "platform/memory/DisplayBitmap.h"
#include "platform/png/PngDecoder.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <system_error>

namespace glimmerly {

namespace {

void warn(std::string_view message, const std::filesystem::path& fileURL) {
    GlimmerlyLog::warning(log_category::overlayCaptureBacking, message,
                          {{"path", fileURL.filename().string()}});
}

/// One warning for each of the two pictures that a file does not give.
void warnMissing(const std::filesystem::path& fileURL) {
    warn("Missing capture file before decode", fileURL);
    warn("Missing capture file before ImageIO decode", fileURL);
}
void warnUndecodable(const std::filesystem::path& fileURL) {
    warn("NSImage(contentsOf:) failed for capture PNG", fileURL);
    warn("ImageIO decode failed", fileURL);
}

/// Null when there is no memory for it.
Bitmap allocate(PixelSize size) {
    try {
        return makeDisplayBitmap(size);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

Size sizeInPoints(const Bitmap& bitmap, double scale) {
    return {bitmap.width() / scale, bitmap.height() / scale};
}

/// Fills the rows beyond the capture, which stands at row `beyond.top`: those below with its first row, those
/// above with its last.
void repeatEdgeRows(Bitmap& expanded, Overhang beyond) {
    const int first = beyond.top;
    const int last = expanded.height() - beyond.bottom - 1;
    for (int y = 0; y < first; ++y)
        std::ranges::copy(expanded.row(last), expanded.row(y).begin());
    for (int y = last + 1; y < expanded.height(); ++y)
        std::ranges::copy(expanded.row(first), expanded.row(y).begin());
}

/// The capture in pixels of its own, for want of an expanded picture to be part of.
OverlayCaptureBackingImage loadUnexpanded(const PngDecoder& decoder, double scale,
                                          const std::filesystem::path& fileURL) {
    Bitmap bitmap = allocate(decoder.size());
    if (bitmap.isNull() || !decoder.decodeInto(bitmap)) {
        warn("NSImage(contentsOf:) failed for capture PNG", fileURL);
        return {};
    }
    const bool hasScale = scale > 0 && std::isfinite(scale);
    return {.backgroundImage = OverlayImage{bitmap, sizeInPoints(bitmap, hasScale ? scale : 1)},
            .backgroundImageExpanded = {}};
}

} // namespace

OverlayCaptureBackingImage OverlayCaptureBackingImage::load(const std::filesystem::path& fileURL,
                                                            double heightPoints, const Screens& screens) {
    std::error_code ignored;
    if (!std::filesystem::exists(fileURL, ignored)) {
        warnMissing(fileURL);
        return {};
    }
    const auto decoder = PngDecoder::open(fileURL);
    if (!decoder) {
        warnUndecodable(fileURL);
        return {};
    }
    const PixelSize captured = decoder->size();
    const double scale = targetScreen(screens).value_or(Screen{}).backingScale;
    if (!(scale > 0) || !std::isfinite(scale * heightPoints))
        return loadUnexpanded(*decoder, scale, fileURL);

    const Overhang beyond = overhang(heightPoints, scale, captured.height);
    Bitmap expanded = allocate({captured.width, captured.height + beyond.total()});
    if (expanded.isNull()) {
        warn("Could not allocate RGBA bitmap context for expanded capture", fileURL);
        return loadUnexpanded(*decoder, scale, fileURL);
    }
    const Bitmap capture = expanded.view({0, beyond.top, captured.width, captured.height});
    if (!decoder->decodeInto(capture)) {
        warnUndecodable(fileURL);
        return {};
    }
    repeatEdgeRows(expanded, beyond);
    return {.backgroundImage = OverlayImage{capture, sizeInPoints(capture, scale)},
            .backgroundImageExpanded = OverlayImage{expanded, sizeInPoints(expanded, scale)}};
}

} // namespace glimmerly

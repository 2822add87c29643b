#include "overlay/backing/OverlayCaptureBackingImage.h"

#include "base/Overhang.h"
#include "capture/service/CapturedPicture.h"
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

/// The capture's pixels; null when the file does not give them.
Bitmap readCapture(const std::filesystem::path& fileURL) {
    Bitmap atHand = CapturedPicture::of(fileURL);
    if (!atHand.isNull())
        return atHand;
    try {
        const auto decoder = PngDecoder::open(fileURL);
        return decoder ? decoder->decode().value_or(Bitmap()) : Bitmap();
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

/// The capture between the rows beyond it, in its own memory where there is room; null when there is none.
Bitmap expand(const Bitmap& capture, Overhang beyond) {
    Bitmap expanded = capture.withFreeRows(beyond.top, beyond.bottom);
    if (!expanded.isNull())
        return expanded;
    try {
        expanded = makeDisplayBitmap({capture.width(), capture.height() + beyond.total()});
    } catch (const std::bad_alloc&) {
        return {};
    }
    for (int y = 0; y < capture.height(); ++y)
        std::ranges::copy(capture.row(y), expanded.row(beyond.top + y).begin());
    return expanded;
}

} // namespace

OverlayCaptureBackingImage OverlayCaptureBackingImage::load(const std::filesystem::path& fileURL,
                                                            double heightPoints, const Screens& screens) {
    std::error_code ignored;
    if (!std::filesystem::exists(fileURL, ignored)) {
        warnMissing(fileURL);
        return {};
    }
    const Bitmap capture = readCapture(fileURL);
    if (capture.isNull()) {
        warnUndecodable(fileURL);
        return {};
    }
    const double scale = targetScreen(screens).value_or(Screen{}).backingScale;
    const bool hasScale = scale > 0 && std::isfinite(scale);
    OverlayCaptureBackingImage images;
    images.backgroundImage = OverlayImage{capture, sizeInPoints(capture, hasScale ? scale : 1)};
    if (!hasScale || !std::isfinite(scale * heightPoints))
        return images;

    const Overhang beyond = overhang(heightPoints, scale, capture.height());
    Bitmap expanded = expand(capture, beyond);
    if (expanded.isNull()) {
        warn("Could not allocate RGBA bitmap context for expanded capture", fileURL);
        return images;
    }
    repeatEdgeRows(expanded, beyond);
    images.backgroundImageExpanded = OverlayImage{expanded, sizeInPoints(expanded, scale)};
    return images;
}

} // namespace glimmerly

#pragma once

#include "base/Bitmap.h"
#include "platform/x11/PixelFormat.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11SharedSegment.h"

#include <memory>
#include <optional>

namespace glimmerly {

/// Copies what the root window shows.
///
/// The pixels come in strips through a small shared segment that stays mapped, one strip being copied while
/// the server fills the next. A segment for the whole display would be new each time, and each page of new
/// memory costs both sides a fault: 100 ms and more for 3840 × 2160, against 10 this way. The server is
/// grabbed meanwhile, so that the strips are of one moment.
class X11Grabber {
public:
    /// `connection` must outlive the grabber.
    explicit X11Grabber(const X11Connection& connection) : connection_(connection) {}

    /// The pixels of `area`, which must lie on the root window.
    [[nodiscard]] Result<Bitmap> grab(PixelRect area);

private:
    [[nodiscard]] Result<void> prepare();
    [[nodiscard]] Result<void> copyThroughSegment(PixelRect area, Bitmap& bitmap);
    [[nodiscard]] Result<void> copyThroughSocket(PixelRect area, Bitmap& bitmap);
    [[nodiscard]] xcb_shm_get_image_cookie_t requestStrip(PixelRect strip, std::size_t offset) const;

    const X11Connection& connection_;
    std::optional<PixelFormat> format_;
    std::unique_ptr<X11SharedSegment> segment_;
    bool sharesMemory_ = true; ///< until that turned out to be impossible
};

} // namespace glimmerly

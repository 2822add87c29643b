#pragma once

#include "base/Bitmap.h"
#include "base/Geometry.h"

namespace glimmerly {

enum class PasteboardOutcome { written, refused };

/// The general pasteboard, read by other programs. Main thread only.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Replaces whatever was there by `image`, one object of `size` points, as PNG and in the platform's
    /// other image formats. The pixels must not change any more. When refused, the earlier contents stay.
    [[nodiscard]] virtual PasteboardOutcome writeImage(const Bitmap& image, Size size) = 0;
};

} // namespace glimmerly

#pragma once

#include "base/Bitmap.h"
#include "base/Result.h"
#include "platform/memory/ByteBuffer.h"

namespace glimmerly {

/// What a PNG is made for.
enum class PngProfile {
    quick,   ///< handed to another program: made in a few milliseconds, moderately small
    compact, ///< kept by the user: well compressed
};

/// `bitmap` as a PNG file, marked as sRGB: 8-bit RGB when it is opaque, else RGBA with the alpha no longer
/// premultiplied. Fails for an empty picture and for one beyond 65535 pixels in a direction or 2^28 in all.
[[nodiscard]] Result<ByteBuffer> encodePng(const Bitmap& bitmap, PngProfile profile);

} // namespace glimmerly

#pragma once

#include "base/Bitmap.h"
#include "base/ByteBuffer.h"
#include "base/Result.h"

namespace glimmerly {

/// What a PNG is made for.
enum class PngProfile {
    fast,    ///< read back within seconds on this machine: as quick as memory, large; alpha is not looked at
    quick,   ///< handed to another program: a few milliseconds, moderately small
    compact, ///< kept by the user: well compressed
};

/// `bitmap` as a PNG file, marked as sRGB: 8-bit RGB when it is opaque, else RGBA with the alpha no longer
/// premultiplied. Fails for an empty picture and when memory runs out.
[[nodiscard]] Result<ByteBuffer> encodePng(const Bitmap& bitmap, PngProfile profile);

} // namespace glimmerly

#pragma once

#include "base/Bitmap.h"
#include "base/Result.h"
#include "platform/png/PngSource.h"

#include <filesystem>
#include <span>

namespace glimmerly {

/// Reads a PNG file of any kind in two steps, so that the caller can provide the pixels' place: first the
/// size, then the picture.
class PngDecoder {
public:
    /// Reads the header of the file at `path`. Fails when it cannot be read or is no PNG, or is larger than
    /// 65535 pixels in a direction or 2^28 pixels in all.
    [[nodiscard]] static Result<PngDecoder> open(const std::filesystem::path& path);
    /// The same for a file in memory, which must outlive the decoder.
    [[nodiscard]] static Result<PngDecoder> over(std::span<const std::byte> png);

    [[nodiscard]] PixelSize size() const { return size_; }

    /// Decodes the picture into `destination`, a bitmap or a view of one of exactly `size()`. After a failure
    /// its pixels are unspecified.
    [[nodiscard]] Result<void> decodeInto(Bitmap destination) const;
    /// Decodes the picture into a bitmap of its own.
    [[nodiscard]] Result<Bitmap> decode() const;

private:
    [[nodiscard]] static Result<PngDecoder> over(PngSource source);
    PngDecoder(PngSource source, PixelSize size) : source_(std::move(source)), size_(size) {}

    PngSource source_;
    PixelSize size_;
};

} // namespace glimmerly

#include "platform/png/PngEncoder.h"

#include "platform/png/PngError.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string_view>

namespace glimmerly {

namespace {

using Compressor = std::unique_ptr<libdeflate_compressor, decltype([](libdeflate_compressor* compressor) {
                                       libdeflate_free_compressor(compressor);
                                   })>;

int level(PngProfile profile) {
    switch (profile) {
    case PngProfile::fast:
        return 0;
    case PngProfile::quick:
        return 1;
    case PngProfile::compact:
        return 6;
    }
    return 1;
}

std::byte* put32(std::byte* at, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        *at++ = static_cast<std::byte>(value >> shift);
    return at;
}

/// Completes a chunk whose `length` data bytes stand at `start` + 8 already; answers where it ends.
std::byte* closeChunk(std::byte* start, std::string_view type, std::size_t length) {
    std::memcpy(put32(start, static_cast<std::uint32_t>(length)), type.data(), 4);
    const std::uint32_t crc = libdeflate_crc32(0, start + 4, length + 4);
    return put32(start + 8 + length, crc);
}

bool isOpaque(const Bitmap& bitmap) {
    for (int y = 0; y < bitmap.height(); ++y) {
        Bitmap::Pixel common = 0xff000000;
        for (const Bitmap::Pixel pixel : bitmap.row(y))
            common &= pixel;
        if (common != 0xff000000)
            return false;
    }
    return true;
}

std::byte straight(Bitmap::Pixel component, Bitmap::Pixel alpha) {
    return static_cast<std::byte>(std::min<Bitmap::Pixel>(255, (component * 255 + alpha / 2) / alpha));
}

std::byte* putPixel(std::byte* at, Bitmap::Pixel pixel, std::size_t channels) {
    const Bitmap::Pixel red = pixel >> 16 & 255;
    const Bitmap::Pixel green = pixel >> 8 & 255;
    const Bitmap::Pixel blue = pixel & 255;
    const Bitmap::Pixel alpha = channels == 3 ? 255 : pixel >> 24;
    if (alpha == 0) {
        std::memset(at, 0, channels);
        return at + channels;
    }
    at[0] = straight(red, alpha);
    at[1] = straight(green, alpha);
    at[2] = straight(blue, alpha);
    if (channels == 4)
        at[3] = static_cast<std::byte>(alpha);
    return at + channels;
}

} // namespace

Result<ByteBuffer> encodePng(const Bitmap& bitmap, PngProfile profile) {
    if (bitmap.isNull())
        return failure(PngError::emptyPicture);
    const std::size_t channels = profile == PngProfile::fast || isOpaque(bitmap) ? 3 : 4;
    const auto width = static_cast<std::size_t>(bitmap.width());
    const auto height = static_cast<std::size_t>(bitmap.height());
    ByteBuffer rows(height * (1 + width * channels));
    std::byte* next = rows.data();
    for (int y = 0; y < bitmap.height(); ++y) {
        *next++ = std::byte{0};
        for (const Bitmap::Pixel pixel : bitmap.row(y))
            next = putPixel(next, pixel, channels);
    }

    const Compressor compressor(libdeflate_alloc_compressor(level(profile)));
    if (!compressor)
        return failure(PngError::outOfMemory);
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), rows.size());
    ByteBuffer png(bound + 100);
    constexpr std::array<unsigned char, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    std::memcpy(png.data(), signature.data(), signature.size());
    std::byte* chunk = png.data() + signature.size();
    std::byte* data = put32(chunk + 8, static_cast<std::uint32_t>(width));
    data = put32(data, static_cast<std::uint32_t>(height));
    const auto colourType = static_cast<std::byte>(channels == 3 ? 2 : 6);
    for (const std::byte value : {std::byte{8}, colourType, std::byte{0}, std::byte{0}, std::byte{0}})
        *data++ = value;
    chunk = closeChunk(chunk, "IHDR", 13);
    chunk[8] = std::byte{0};
    chunk = closeChunk(chunk, "sRGB", 1);
    const std::size_t length =
        libdeflate_zlib_compress(compressor.get(), rows.data(), rows.size(), chunk + 8, bound);
    chunk = closeChunk(chunk, "IDAT", length);
    chunk = closeChunk(chunk, "IEND", 0);
    png.truncate(static_cast<std::size_t>(chunk - png.data()));
    return png;
}

} // namespace glimmerly

#pragma once

#include "base/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace glimmerly {

// The parts of a PNG file around its compressed pixels. The picture's zlib stream is cut into IDAT chunks so
// that each piece of the pixels has one to itself: the head ends with one for the stream's own two bytes, the
// tail begins with one for its end.

enum class PngColour : std::uint8_t { rgb = 2, rgba = 6 };

[[nodiscard]] constexpr std::size_t bytesPerPixel(PngColour colour) {
    return colour == PngColour::rgb ? 3 : 4;
}

/// Length, type and checksum.
inline constexpr std::size_t chunkOverhead = 12;
/// Where a chunk's data starts within it.
inline constexpr std::size_t chunkDataOffset = 8;

inline constexpr std::size_t pngHeadSize =
    8 + (chunkOverhead + 13) + (chunkOverhead + 1) + (chunkOverhead + 2);
inline constexpr std::size_t pngTailSize = (chunkOverhead + 9) + chunkOverhead;

/// Signature, header, sRGB mark and the start of the zlib stream, `pngHeadSize` bytes. 8 bits a component,
/// not interlaced.
void writePngHead(std::byte* out, PixelSize size, PngColour colour);

/// The end of the zlib stream, whose bytes have the checksum `adler`, and of the file: `pngTailSize` bytes.
void writePngTail(std::byte* out, std::uint32_t adler);

/// Completes the chunk at `start`, whose `length` bytes of data stand in their place already; answers where
/// it ends.
std::byte* completeChunk(std::byte* start, std::string_view type, std::size_t length);

/// Whether a chunk of that type and length with the right checksum stands at `start`.
[[nodiscard]] bool isChunk(const std::byte* start, std::string_view type, std::size_t length);

/// The zlib stream's checksum of `size` bytes.
[[nodiscard]] std::uint32_t adlerOf(const std::uint8_t* bytes, std::size_t size);
/// The checksum of two stretches of bytes, one after the other, from that of each.
[[nodiscard]] std::uint32_t joinedAdlers(std::uint32_t first, std::uint32_t second, std::size_t secondSize);
/// The checksum of no bytes.
inline constexpr std::uint32_t emptyAdler = 1;

} // namespace glimmerly

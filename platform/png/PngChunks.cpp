#include "platform/png/PngChunks.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <zlib.h>

#include <array>
#include <cstring>

namespace glimmerly {

namespace {

using Four = std::array<std::uint8_t, 4>;

Four bigEndian(std::uint32_t value) {
    return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
            static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

/// Over a chunk's type and data.
std::uint32_t checksum(const std::byte* start, std::size_t length) {
    return crc32_gzip_refl(0, reinterpret_cast<const unsigned char*>(start + 4), length + 4);
}

template <std::size_t size>
std::byte* writeChunk(std::byte* out, std::string_view type, const std::array<std::uint8_t, size>& data) {
    std::memcpy(out + chunkDataOffset, data.data(), size);
    return completeChunk(out, type, size);
}

} // namespace

void writePngHead(std::byte* out, PixelSize size, PngColour colour) {
    constexpr std::array<std::uint8_t, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    constexpr std::array<std::uint8_t, 1> perceptualIntent{0};
    constexpr std::array<std::uint8_t, 2> zlibHeader{0x78, 0x01};
    const Four width = bigEndian(static_cast<std::uint32_t>(size.width));
    const Four height = bigEndian(static_cast<std::uint32_t>(size.height));
    std::array<std::uint8_t, 13> header{};
    std::memcpy(header.data(), width.data(), 4);
    std::memcpy(header.data() + 4, height.data(), 4);
    header[8] = 8; // bits a component
    header[9] = static_cast<std::uint8_t>(colour);

    std::memcpy(out, signature.data(), signature.size());
    out = writeChunk(out + signature.size(), "IHDR", header);
    out = writeChunk(out, "sRGB", perceptualIntent);
    writeChunk(out, "IDAT", zlibHeader);
}

void writePngTail(std::byte* out, std::uint32_t adler) {
    const Four sum = bigEndian(adler);
    const std::array<std::uint8_t, 9> lastBlockAndSum{1, 0, 0, 0xff, 0xff, sum[0], sum[1], sum[2], sum[3]};
    out = writeChunk(out, "IDAT", lastBlockAndSum);
    completeChunk(out, "IEND", 0);
}

std::byte* completeChunk(std::byte* start, std::string_view type, std::size_t length) {
    const Four size = bigEndian(static_cast<std::uint32_t>(length));
    std::memcpy(start, size.data(), 4);
    std::memcpy(start + 4, type.data(), 4);
    const Four sum = bigEndian(checksum(start, length));
    std::memcpy(start + chunkDataOffset + length, sum.data(), 4);
    return start + chunkOverhead + length;
}

bool isChunk(const std::byte* start, std::string_view type, std::size_t length) {
    const Four size = bigEndian(static_cast<std::uint32_t>(length));
    if (std::memcmp(start, size.data(), 4) != 0 || std::memcmp(start + 4, type.data(), 4) != 0)
        return false;
    const Four sum = bigEndian(checksum(start, length));
    return std::memcmp(start + chunkDataOffset + length, sum.data(), 4) == 0;
}

std::uint32_t adlerOf(const std::uint8_t* bytes, std::size_t size) {
    return isal_adler32(emptyAdler, bytes, size);
}

std::uint32_t joinedAdlers(std::uint32_t first, std::uint32_t second, std::size_t secondSize) {
    return static_cast<std::uint32_t>(adler32_combine(first, second, static_cast<z_off_t>(secondSize)));
}

} // namespace glimmerly

#include "platform/png/StoredPng.h"

#include "base/TwoThreads.h"
#include "platform/files/PositionedFile.h"
#include "platform/memory/ByteBuffer.h"
#include "platform/png/PixelPacking.h"
#include "platform/png/PngChunks.h"
#include "platform/png/PngError.h"
#include "platform/png/PngLimits.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <optional>
#include <vector>

namespace glimmerly {

namespace {

constexpr std::size_t blockHeaderSize = 5;
constexpr std::size_t maximumBlockBytes = 65535;
constexpr std::size_t bandDataOffset = chunkDataOffset + blockHeaderSize;

/// Where everything lies in the file: the head, bands of as many rows as one stored block holds, each a chunk
/// of its own, and the tail.
struct Layout {
    PixelSize size;

    [[nodiscard]] std::size_t rowBytes() const { return 1 + 3 * static_cast<std::size_t>(size.width); }
    [[nodiscard]] bool isPossible() const {
        return isWithinPngLimits(size) && rowBytes() <= maximumBlockBytes;
    }
    [[nodiscard]] int rowsPerBand() const { return static_cast<int>(maximumBlockBytes / rowBytes()); }
    [[nodiscard]] int bandCount() const { return (size.height + rowsPerBand() - 1) / rowsPerBand(); }
    [[nodiscard]] int firstRow(int band) const { return band * rowsPerBand(); }
    [[nodiscard]] int endRow(int band) const { return std::min(size.height, firstRow(band + 1)); }
    [[nodiscard]] std::size_t dataBytes(int band) const {
        return static_cast<std::size_t>(endRow(band) - firstRow(band)) * rowBytes();
    }
    [[nodiscard]] std::size_t chunkBytes(int band) const {
        return chunkOverhead + blockHeaderSize + dataBytes(band);
    }
    [[nodiscard]] std::size_t offset(int band) const {
        return pngHeadSize + static_cast<std::size_t>(band) * chunkBytes(0);
    }
    [[nodiscard]] std::size_t tailOffset() const {
        const int last = bandCount() - 1;
        return offset(last) + chunkBytes(last);
    }
    [[nodiscard]] std::size_t fileBytes() const { return tailOffset() + pngTailSize; }
};

std::array<std::uint8_t, blockHeaderSize> blockHeader(std::size_t length) {
    const auto low = static_cast<std::uint8_t>(length);
    const auto high = static_cast<std::uint8_t>(length >> 8);
    return {0, low, high, static_cast<std::uint8_t>(~low), static_cast<std::uint8_t>(~high)};
}

std::array<std::byte, pngHeadSize> headOf(const Layout& layout) {
    std::array<std::byte, pngHeadSize> head{};
    writePngHead(head.data(), layout.size, PngColour::rgb);
    return head;
}

/// The tail for the bands' checksums.
std::array<std::byte, pngTailSize> tailOf(const Layout& layout, const std::vector<std::uint32_t>& adlers) {
    std::uint32_t adler = emptyAdler;
    for (int band = 0; band < layout.bandCount(); ++band)
        adler = joinedAdlers(adler, adlers[static_cast<std::size_t>(band)], layout.dataBytes(band));
    std::array<std::byte, pngTailSize> tail{};
    writePngTail(tail.data(), adler);
    return tail;
}

std::uint8_t* octets(std::byte* bytes) {
    return reinterpret_cast<std::uint8_t*>(bytes);
}
const std::uint8_t* octets(const std::byte* bytes) {
    return reinterpret_cast<const std::uint8_t*>(bytes);
}

/// Writes `band` of `bitmap` as a chunk to `out`; answers the checksum of its data.
std::uint32_t encodeBand(const Layout& layout, const Bitmap& bitmap, int band, std::byte* out) {
    const std::size_t length = layout.dataBytes(band);
    const auto header = blockHeader(length);
    std::memcpy(out + chunkDataOffset, header.data(), header.size());
    std::uint8_t* row = octets(out) + bandDataOffset;
    for (int y = layout.firstRow(band); y < layout.endRow(band); ++y, row += layout.rowBytes()) {
        *row = 0; // not filtered
        packRgb(bitmap.row(y), row + 1);
    }
    completeChunk(out, "IDAT", blockHeaderSize + length);
    return adlerOf(octets(out) + bandDataOffset, length);
}

/// Reads `band` from `chunk` into `bitmap`; answers the checksum of its data, none when it is not as
/// `encodeBand` makes it.
std::optional<std::uint32_t> decodeBand(const Layout& layout, std::span<const std::byte> chunk, int band,
                                        Bitmap& bitmap) {
    const std::size_t length = layout.dataBytes(band);
    const auto header = blockHeader(length);
    if (chunk.size() != layout.chunkBytes(band) || !isChunk(chunk.data(), "IDAT", blockHeaderSize + length) ||
        std::memcmp(chunk.data() + chunkDataOffset, header.data(), header.size()) != 0)
        return std::nullopt;
    const std::uint8_t* row = octets(chunk.data()) + bandDataOffset;
    const std::uint32_t adler = adlerOf(row, length);
    for (int y = layout.firstRow(band); y < layout.endRow(band); ++y, row += layout.rowBytes()) {
        if (*row != 0)
            return std::nullopt;
        unpackRgb(row + 1, bitmap.row(y));
    }
    return adler;
}

/// Whether the source holds `expected` at `offset`.
template <std::size_t size>
bool holds(const PngSource& source, std::size_t offset, const std::array<std::byte, size>& expected) {
    std::array<std::byte, size> scratch{};
    const auto found = source.read(offset, scratch);
    return found && std::ranges::equal(*found, expected);
}

} // namespace

Result<StoredPng> StoredPng::of(const Bitmap& bitmap) {
    if (bitmap.isNull())
        return failure(PngError::emptyPicture);
    if (!Layout{bitmap.size()}.isPossible())
        return failure(PngError::tooLarge);
    return StoredPng(bitmap);
}

Result<void> StoredPng::writeTo(const FileDescriptor& file) const {
    const Layout layout{bitmap_.size()};
    const auto bandCount = static_cast<std::size_t>(layout.bandCount());
    std::vector<std::uint32_t> adlers(bandCount);
    std::vector<Result<void>> outcomes(bandCount);
    std::atomic<bool> goingWell = true;
    forEachOnTwoThreads(layout.bandCount(), [&] {
        return [&, scratch = std::make_shared<ByteBuffer>(layout.chunkBytes(0))](int band) {
            if (!goingWell)
                return;
            const auto index = static_cast<std::size_t>(band);
            adlers[index] = encodeBand(layout, bitmap_, band, scratch->data());
            outcomes[index] =
                writeAt(file, scratch->span().first(layout.chunkBytes(band)), layout.offset(band));
            if (!outcomes[index])
                goingWell = false;
        };
    });
    const auto failed = std::ranges::find_if(outcomes, [](const auto& outcome) { return !outcome; });
    if (failed != outcomes.end())
        return *failed;
    if (auto head = writeAt(file, headOf(layout), 0); !head)
        return head;
    return writeAt(file, tailOf(layout, adlers), layout.tailOffset());
}

StoredPngReading readStoredPng(const PngSource& source, Bitmap destination) {
    const Layout layout{destination.size()};
    if (!layout.isPossible() || source.size() != layout.fileBytes() || !holds(source, 0, headOf(layout)))
        return StoredPngReading::notOfThisForm;
    std::vector<std::uint32_t> adlers(static_cast<std::size_t>(layout.bandCount()));
    std::atomic<bool> asExpected = true;
    forEachOnTwoThreads(layout.bandCount(), [&] {
        return [&, scratch = std::make_shared<ByteBuffer>(layout.chunkBytes(0)),
                bitmap = destination](int band) mutable {
            const auto room = scratch->span().first(layout.chunkBytes(band));
            const auto chunk = source.read(layout.offset(band), room);
            const auto adler = chunk ? decodeBand(layout, *chunk, band, bitmap) : std::nullopt;
            adlers[static_cast<std::size_t>(band)] = adler.value_or(0);
            if (!adler)
                asExpected = false;
        };
    });
    if (!asExpected || !holds(source, layout.tailOffset(), tailOf(layout, adlers)))
        return StoredPngReading::notOfThisForm;
    return StoredPngReading::done;
}

} // namespace glimmerly

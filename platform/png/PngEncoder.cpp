#include "platform/png/PngEncoder.h"

#include "base/TwoThreads.h"
#include "platform/png/BandCompressor.h"
#include "platform/png/PixelPacking.h"
#include "platform/png/PngChunks.h"
#include "platform/png/PngError.h"
#include "platform/png/PngLimits.h"
#include "platform/png/RowFilter.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <vector>

namespace glimmerly {

namespace {

/// Large enough to compress well on its own, small enough for two threads to share a picture evenly.
constexpr std::size_t wantedBandBytes = std::size_t{1} << 20;

/// Below it a band is flat or smooth, and a long search pays; text on a photo costs 2, grain 4.
constexpr double smoothCostPerByte = 1.2;

/// How a picture is cut into bands.
struct Bands {
    PngColour colour;
    PixelSize size;

    [[nodiscard]] std::size_t pixelBytesPerRow() const {
        return static_cast<std::size_t>(size.width) * bytesPerPixel(colour);
    }
    [[nodiscard]] std::size_t filteredBytesPerRow() const { return 1 + pixelBytesPerRow(); }
    [[nodiscard]] int rowsPerBand() const {
        return static_cast<int>(std::max<std::size_t>(1, wantedBandBytes / filteredBytesPerRow()));
    }
    [[nodiscard]] int count() const { return (size.height + rowsPerBand() - 1) / rowsPerBand(); }
    [[nodiscard]] int firstRow(int band) const { return band * rowsPerBand(); }
    [[nodiscard]] int endRow(int band) const { return std::min(size.height, firstRow(band + 1)); }
    [[nodiscard]] std::size_t bytes(int band) const {
        return static_cast<std::size_t>(endRow(band) - firstRow(band)) * filteredBytesPerRow();
    }
};

/// A band compressed, as a whole chunk; none while it is not made.
struct Piece {
    std::span<const std::byte> chunk;
    std::uint32_t adler = emptyAdler;
};

PngColour colourFor(const Bitmap& bitmap) {
    std::atomic<bool> opaque = true;
    forEachOnTwoThreads(bitmap.height(), [&] {
        return [&](int y) {
            if (opaque && !isOpaque(bitmap.row(y)))
                opaque = false;
        };
    });
    return opaque ? PngColour::rgb : PngColour::rgba;
}

/// Filters and compresses bands on one thread. The chunks stay in its memory.
class BandEncoder {
public:
    BandEncoder(const Bitmap& bitmap, const Bands& bands, PngProfile profile, std::vector<Piece>& pieces)
        : bitmap_(bitmap), bands_(bands), pieces_(pieces),
          filter_(bands.pixelBytesPerRow(), bytesPerPixel(bands.colour),
                  profile == PngProfile::quick ? FilterChoice::horizontalAndVertical : FilterChoice::all),
          compressor_(profile == PngProfile::quick ? makeQuickCompressor() : makeCompactCompressor()),
          filtered_(bands.bytes(0)),
          // Only what is written to takes memory; one thread may come to do every band.
          chunks_(static_cast<std::size_t>(bands.count()) *
                  (chunkOverhead + compressedBound(bands.bytes(0)))) {}

    void operator()(int band) {
        const std::uint64_t cost = filterBand(band);
        const std::span<const std::uint8_t> filtered(filtered_.octets(), bands_.bytes(band));
        const auto depth =
            static_cast<double>(cost) < smoothCostPerByte * static_cast<double>(filtered.size())
                ? SearchDepth::deep
                : SearchDepth::shallow;
        const std::size_t room = compressedBound(filtered.size());
        const auto length =
            compressor_->compress(filtered, {chunks_.octets() + used_ + chunkDataOffset, room}, depth);
        if (!length)
            return;
        std::byte* chunk = chunks_.data() + used_;
        completeChunk(chunk, "IDAT", *length);
        used_ += chunkOverhead + *length;
        pieces_[static_cast<std::size_t>(band)] = {{chunk, chunkOverhead + *length},
                                                   adlerOf(filtered.data(), filtered.size())};
    }

private:
    void pack(int y) {
        if (bands_.colour == PngColour::rgb)
            packRgb(bitmap_.row(y), filter_.nextRow().data());
        else
            packRgba(bitmap_.row(y), filter_.nextRow().data());
    }

    std::uint64_t filterBand(int band) {
        if (band == 0) {
            filter_.restart();
        } else {
            pack(bands_.firstRow(band) - 1);
            filter_.skip();
        }
        std::uint64_t cost = 0;
        std::uint8_t* out = filtered_.octets();
        for (int y = bands_.firstRow(band); y < bands_.endRow(band); ++y) {
            pack(y);
            cost += filter_.apply(out);
            out += bands_.filteredBytesPerRow();
        }
        return cost;
    }

    const Bitmap& bitmap_;
    const Bands& bands_;
    std::vector<Piece>& pieces_;
    RowFilter filter_;
    std::unique_ptr<BandCompressor> compressor_;
    ByteBuffer filtered_;
    ByteBuffer chunks_;
    std::size_t used_ = 0;
};

ByteBuffer assembled(const Bands& bands, const std::vector<Piece>& pieces) {
    std::size_t size = pngHeadSize + pngTailSize;
    for (const Piece& piece : pieces)
        size += piece.chunk.size();
    ByteBuffer file(size);
    writePngHead(file.data(), bands.size, bands.colour);
    std::byte* next = file.data() + pngHeadSize;
    std::uint32_t adler = emptyAdler;
    for (int band = 0; band < bands.count(); ++band) {
        const Piece& piece = pieces[static_cast<std::size_t>(band)];
        next = std::ranges::copy(piece.chunk, next).out;
        adler = joinedAdlers(adler, piece.adler, bands.bytes(band));
    }
    writePngTail(next, adler);
    return file;
}

} // namespace

Result<ByteBuffer> encodePng(const Bitmap& bitmap, PngProfile profile) {
    if (bitmap.isNull())
        return failure(PngError::emptyPicture);
    if (!isWithinPngLimits(bitmap.size()))
        return failure(PngError::tooLarge);
    const Bands bands{colourFor(bitmap), bitmap.size()};
    std::vector<Piece> pieces(static_cast<std::size_t>(bands.count()));
    std::vector<std::unique_ptr<BandEncoder>> encoders; // they hold the pieces' bytes
    forEachOnTwoThreads(bands.count(), [&] {
        encoders.push_back(std::make_unique<BandEncoder>(bitmap, bands, profile, pieces));
        return [&encoder = *encoders.back()](int band) { encoder(band); };
    });
    if (std::ranges::any_of(pieces, [](const Piece& piece) { return piece.chunk.empty(); }))
        return failure(PngError::outOfMemory);
    return assembled(bands, pieces);
}

} // namespace glimmerly

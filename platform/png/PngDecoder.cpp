#include "platform/png/PngDecoder.h"

#include "platform/memory/ByteBuffer.h"
#include "platform/memory/DisplayBitmap.h"
#include "platform/png/PixelPacking.h"
#include "platform/png/PngError.h"
#include "platform/png/PngLimits.h"
#include "platform/png/StoredPng.h"

#include <spng.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <memory>

namespace glimmerly {

namespace {

constexpr off_t maximumFileBytes = off_t{3} << 29;
constexpr std::size_t maximumTextBytes = std::size_t{16} << 20;

using Context = std::unique_ptr<spng_ctx, decltype([](spng_ctx* context) { spng_ctx_free(context); })>;

/// Reads signature and header only.
Result<spng_ihdr> readHeader(spng_ctx* context, std::span<const std::byte> png) {
    if (context == nullptr)
        return failure(PngError::outOfMemory);
    spng_ihdr header{};
    spng_set_chunk_limits(context, static_cast<std::size_t>(maximumFileBytes), maximumTextBytes);
    if (spng_set_png_buffer(context, png.data(), png.size()) != 0 || spng_get_ihdr(context, &header) != 0)
        return failure(PngError::notPng);
    if (header.width > maximumPngSide || header.height > maximumPngSide ||
        !isWithinPngLimits({static_cast<int>(header.width), static_cast<int>(header.height)}))
        return failure(PngError::tooLarge);
    return header;
}

/// Any PNG at all. The rows pass through `destination` as red, green, blue, alpha: an interlaced picture
/// comes in seven layers that fill each other's gaps.
Result<void> decodeGenerally(std::span<const std::byte> png, Bitmap destination) {
    const Context context(spng_ctx_new(0));
    const auto header = readHeader(context.get(), png);
    if (!header)
        return failure(header.error());
    constexpr int flags = SPNG_DECODE_TRNS | SPNG_DECODE_PROGRESSIVE;
    if (spng_decode_image(context.get(), nullptr, 0, SPNG_FMT_RGBA8, flags) != 0)
        return failure(PngError::damaged);
    int outcome = 0;
    while (outcome == 0) {
        spng_row_info info{};
        outcome = spng_get_row_info(context.get(), &info); // tells the end where the last layers are empty
        if (outcome == 0) {
            const auto row = destination.row(static_cast<int>(info.row_num));
            outcome = spng_decode_row(context.get(), row.data(), row.size_bytes());
        }
    }
    if (outcome != SPNG_EOI)
        return failure(PngError::damaged);
    if (spng_decode_chunks(context.get()) != 0) // the checksum of the last pixels comes after them
        return failure(PngError::damaged);
    for (int y = 0; y < destination.height(); ++y)
        premultiplyRgba(destination.row(y));
    return {};
}

} // namespace

Result<PngDecoder> PngDecoder::over(PngSource source) {
    constexpr std::size_t signatureAndHeader = 8 + 25;
    std::array<std::byte, signatureAndHeader> scratch{};
    const auto start = source.read(0, scratch);
    if (!start)
        return failure(start.error());
    const Context context(spng_ctx_new(0));
    const auto header = readHeader(context.get(), *start);
    if (!header)
        return failure(header.error());
    return PngDecoder(std::move(source), {static_cast<int>(header->width), static_cast<int>(header->height)});
}

Result<PngDecoder> PngDecoder::over(std::span<const std::byte> png) {
    return over(PngSource(png));
}

Result<PngDecoder> PngDecoder::open(const std::filesystem::path& path) {
    FileDescriptor file(
        ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)); // a pipe must not hold us up
    struct stat status{};
    if (!file || ::fstat(file.get(), &status) != 0)
        return posixFailure("Opening " + path.filename().string());
    if (!S_ISREG(status.st_mode))
        return failure(PngError::notPng);
    if (status.st_size > maximumFileBytes)
        return failure(PngError::tooLarge);
    return over(PngSource(std::move(file), static_cast<std::size_t>(status.st_size)));
}

Result<void> PngDecoder::decodeInto(Bitmap destination) const {
    if (readStoredPng(source_, destination) == StoredPngReading::done)
        return {};
    ByteBuffer scratch(source_.size());
    const auto png = source_.read(0, scratch.span());
    if (!png)
        return failure(png.error());
    return decodeGenerally(*png, std::move(destination));
}

Result<Bitmap> PngDecoder::decode() const {
    Bitmap bitmap = makeDisplayBitmap(size_);
    if (auto outcome = decodeInto(bitmap); !outcome)
        return failure(outcome.error());
    return bitmap;
}

} // namespace glimmerly

#include "platform/png/PngDecoder.h"

#include "platform/png/PngError.h"

#include <spng.h>

#include <cerrno>
#include <fstream>
#include <memory>
#include <vector>

namespace glimmerly {

namespace {

constexpr int maximumSide = 65535;
constexpr std::int64_t maximumPixels = std::int64_t{1} << 28;

using Context = std::unique_ptr<spng_ctx, decltype([](spng_ctx* context) { spng_ctx_free(context); })>;

Result<Context> openContext(std::span<const std::byte> png, spng_ihdr& header) {
    Context context(spng_ctx_new(0));
    if (!context)
        return failure(PngError::outOfMemory);
    spng_set_image_limits(context.get(), maximumSide, maximumSide);
    if (spng_set_png_buffer(context.get(), png.data(), png.size()) != 0)
        return failure(PngError::notPng);
    switch (spng_get_ihdr(context.get(), &header)) {
    case 0:
        break;
    case SPNG_EUSER_WIDTH:
    case SPNG_EUSER_HEIGHT:
        return failure(PngError::tooLarge);
    default:
        return failure(PngError::notPng);
    }
    if (std::int64_t{header.width} * header.height > maximumPixels)
        return failure(PngError::tooLarge);
    return context;
}

Bitmap::Pixel premultiplied(const std::uint8_t* rgba) {
    const auto alpha = Bitmap::Pixel{rgba[3]};
    const auto scaled = [alpha](Bitmap::Pixel component) { return (component * alpha + 127) / 255; };
    return alpha << 24 | scaled(rgba[0]) << 16 | scaled(rgba[1]) << 8 | scaled(rgba[2]);
}

} // namespace

Result<PngDecoder> PngDecoder::over(std::span<const std::byte> png) {
    spng_ihdr header{};
    if (auto context = openContext(png, header); !context)
        return failure(context.error());
    return PngDecoder({}, png, {static_cast<int>(header.width), static_cast<int>(header.height)});
}

Result<PngDecoder> PngDecoder::open(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary | std::ios::ate);
    if (!stream)
        return failure(Error::posix(errno, "Open " + path.filename().string()));
    ByteBuffer file(static_cast<std::size_t>(stream.tellg()));
    stream.seekg(0).read(reinterpret_cast<char*>(file.data()), static_cast<std::streamsize>(file.size()));
    if (!stream)
        return failure(Error::posix(errno, "Read " + path.filename().string()));
    auto decoder = over(file.span());
    if (decoder)
        decoder->file_ = std::move(file);
    return decoder;
}

Result<void> PngDecoder::decodeInto(Bitmap destination) const {
    spng_ihdr header{};
    auto context = openContext(png_, header);
    if (!context)
        return failure(context.error());
    constexpr int flags = SPNG_DECODE_TRNS | SPNG_DECODE_PROGRESSIVE;
    if (spng_decode_image(context->get(), nullptr, 0, SPNG_FMT_RGBA8, flags) != 0)
        return failure(PngError::damaged);
    std::vector<std::uint8_t> rgba(std::size_t{header.width} * 4);
    spng_row_info info{};
    int outcome = 0;
    while (outcome == 0) {
        if (spng_get_row_info(context->get(), &info) != 0)
            return failure(PngError::damaged);
        outcome = spng_decode_row(context->get(), rgba.data(), rgba.size());
        if (outcome != 0 && outcome != SPNG_EOI)
            return failure(PngError::damaged);
        const auto row = destination.row(static_cast<int>(info.row_num));
        for (std::size_t x = 0; x < row.size(); ++x)
            row[x] = premultiplied(&rgba[x * 4]);
    }
    return {};
}

Result<Bitmap> PngDecoder::decode() const {
    Bitmap bitmap(size_);
    if (auto outcome = decodeInto(bitmap); !outcome)
        return failure(outcome.error());
    return bitmap;
}

} // namespace glimmerly

#pragma once

#include "base/Bitmap.h"

#include <gtest/gtest.h>
#include <png.h>

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

namespace glimmerly {

/// A picture's bytes red, green, blue, alpha, not premultiplied.
using Rgba = std::vector<std::uint8_t>;

/// What the reference reader makes of a file; fails the test when it finds any fault.
inline Rgba readWithLibPng(std::span<const std::byte> file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_TRUE(png_image_begin_read_from_memory(&image, file.data(), file.size())) << image.message;
    image.format = PNG_FORMAT_RGBA;
    Rgba pixels(PNG_IMAGE_SIZE(image));
    EXPECT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) << image.message;
    EXPECT_EQ(image.warning_or_error, 0U) << image.message;
    return pixels;
}

/// A kind of file that the reference writer is to make.
struct PngKind {
    int colourType;
    int bitDepth;
    int interlace;
};

/// A file of random samples; palettes have 200 or fewer entries, half of them translucent.
inline std::vector<std::byte> writeWithLibPng(const PngKind& kind, PixelSize size) {
    std::vector<std::byte> file;
    std::mt19937 random(11);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    const auto append = [](png_structp writer, png_bytep bytes, std::size_t count) {
        auto& out = *static_cast<std::vector<std::byte>*>(png_get_io_ptr(writer));
        const auto* from = reinterpret_cast<const std::byte*>(bytes);
        out.insert(out.end(), from, from + count);
    };
    png_set_write_fn(png, &file, append, nullptr);
    png_set_IHDR(png, info, static_cast<png_uint_32>(size.width), static_cast<png_uint_32>(size.height),
                 kind.bitDepth, kind.colourType, kind.interlace, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    const unsigned entries = kind.bitDepth < 8 ? 1U << kind.bitDepth : 200;
    std::vector<png_color> palette(entries);
    std::vector<png_byte> alphas(entries / 2);
    if (kind.colourType == PNG_COLOR_TYPE_PALETTE) {
        for (png_color& colour : palette)
            colour = {static_cast<png_byte>(random()), static_cast<png_byte>(random()), 99};
        for (png_byte& alpha : alphas)
            alpha = static_cast<png_byte>(random());
        png_set_PLTE(png, info, palette.data(), static_cast<int>(entries));
        png_set_tRNS(png, info, alphas.data(), static_cast<int>(alphas.size()), nullptr);
    }
    png_write_info(png, info);
    const std::size_t rowBytes = png_get_rowbytes(png, info);
    std::vector<png_byte> samples(rowBytes * static_cast<std::size_t>(size.height));
    for (png_byte& sample : samples)
        sample = static_cast<png_byte>(kind.bitDepth == 8 ? random() % entries : random());
    std::vector<png_bytep> rows;
    for (std::size_t y = 0; y < static_cast<std::size_t>(size.height); ++y)
        rows.push_back(&samples[y * rowBytes]);
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

} // namespace glimmerly

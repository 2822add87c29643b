#pragma once

#include <gtest/gtest.h>
#include <png.h>

#include <cstddef>
#include <cstdint>
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

} // namespace glimmerly

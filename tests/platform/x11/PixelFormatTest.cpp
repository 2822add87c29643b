#include "platform/x11/PixelFormat.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using enum ByteOrder;

std::vector<Bitmap::Pixel> converted(const PixelLayout& layout, const std::vector<int>& bytes, int width) {
    std::vector<std::byte> row;
    for (const int byte : bytes)
        row.push_back(static_cast<std::byte>(byte));
    const auto format = PixelFormat::of(layout);
    EXPECT_TRUE(format);
    EXPECT_EQ(format->bytesPerRow(width), row.size());
    std::vector<Bitmap::Pixel> pixels(static_cast<std::size_t>(width));
    format->convert(row.data(), pixels);
    return pixels;
}

TEST(PixelFormat, ReadsEveryLayoutOfServers) {
    const struct {
        const char* name;
        PixelLayout layout;
        std::vector<int> bytes;
        std::vector<Bitmap::Pixel> expected;
    } cases[] = {
        {"the usual one, its fourth byte undefined",
         {},
         {0x33, 0x22, 0x11, 0x00, 0x66, 0x55, 0x44, 0x7f},
         {0xff112233, 0xff445566}},
        {"most significant byte first",
         {.byteOrder = mostSignificantFirst},
         {0x00, 0x11, 0x22, 0x33, 0x7f, 0x44, 0x55, 0x66},
         {0xff112233, 0xff445566}},
        {"blue in the high bits",
         {.redMask = 0xff, .greenMask = 0xff00, .blueMask = 0xff0000},
         {0x33, 0x22, 0x11, 0x00},
         {0xff332211}},
        {"colours in the upper three bytes",
         {.redMask = 0xff000000, .greenMask = 0xff0000, .blueMask = 0xff00},
         {0x00, 0x33, 0x22, 0x11},
         {0xff112233}},
        {"10 bits a colour: 0, 1023, 512; 4, 1, 2",
         {.redMask = 0x3ff00000, .greenMask = 0xffc00, .blueMask = 0x3ff},
         {0x00, 0xfe, 0x0f, 0x00, 0x02, 0x04, 0x40, 0x00},
         {0xff00ff80, 0xff010000}},
        {"packed",
         {.bitsPerPixel = 24},
         {0x33, 0x22, 0x11, 0x66, 0x55, 0x44, 0, 0},
         {0xff112233, 0xff445566}},
        {"packed, most significant byte first",
         {.bitsPerPixel = 24, .byteOrder = mostSignificantFirst},
         {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0, 0},
         {0xff112233, 0xff445566}},
        {"5, 6 and 5 bits: the ends and the middle",
         {.bitsPerPixel = 16, .redMask = 0xf800, .greenMask = 0x7e0, .blueMask = 0x1f},
         {0xff, 0xff, 0x00, 0x00, 0x10, 0x84, 0, 0},
         {0xffffffff, 0xff000000, 0xff848284}},
        {"5, 6 and 5 bits, most significant byte first, padded to 8 bytes",
         {.bitsPerPixel = 16,
          .byteOrder = mostSignificantFirst,
          .redMask = 0xf800,
          .greenMask = 0x7e0,
          .blueMask = 0x1f,
          .rowAlignment = 8},
         {0xf8, 0x00, 0x07, 0xe0, 0x00, 0x1f, 0, 0},
         {0xffff0000, 0xff00ff00, 0xff0000ff}},
    };
    for (const auto& [name, layout, bytes, expected] : cases)
        EXPECT_EQ(converted(layout, bytes, static_cast<int>(expected.size())), expected) << name;
}

TEST(PixelFormat, RefusesWhatItCannotRead) {
    for (const int bits : {1, 8, 15, 64})
        EXPECT_FALSE(PixelFormat::of({.bitsPerPixel = bits})) << bits;
    for (const std::uint32_t mask : {0x0U, 0xff00ffU, 0x5U, 0xffffffU})
        EXPECT_FALSE(PixelFormat::of({.greenMask = mask})) << mask;
}

} // namespace
} // namespace glimmerly

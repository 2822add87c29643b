#include "platform/png/PngDecoder.h"
#include "platform/png/PngEncoder.h"

#include <gtest/gtest.h>

#include <random>

namespace glimmerly {
namespace {

Bitmap noise(PixelSize size, Bitmap::Pixel orWith) {
    std::mt19937 random(7);
    Bitmap bitmap(size);
    for (int y = 0; y < size.height; ++y) {
        for (Bitmap::Pixel& pixel : bitmap.row(y))
            pixel = static_cast<Bitmap::Pixel>(random()) | orWith;
    }
    return bitmap;
}

TEST(Png, ComesBackAsItWasEncoded) {
    for (const PngProfile profile : {PngProfile::fast, PngProfile::quick, PngProfile::compact}) {
        for (const PixelSize size : {PixelSize{1, 1}, PixelSize{37, 5}, PixelSize{640, 480}}) {
            const Bitmap original = noise(size, 0xff000000);
            const auto png = encodePng(original, profile);
            ASSERT_TRUE(png);
            const auto decoder = PngDecoder::over(png->span());
            ASSERT_TRUE(decoder);
            EXPECT_EQ(decoder->size(), size);
            const auto decoded = decoder->decode();
            ASSERT_TRUE(decoded);
            EXPECT_EQ(*decoded, original);
        }
    }
}

} // namespace
} // namespace glimmerly

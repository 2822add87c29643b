#include "platform/png/PngEncoder.h"

#include "platform/png/PngDecoder.h"
#include "platform/png/PngError.h"
#include "tests/platform/png/LibPng.h"
#include "tests/platform/png/TestPictures.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

const std::vector<PixelSize> sizes{{1, 1}, {3, 2}, {7, 9}, {8, 1}, {37, 400}, {1000, 1200}};

TEST(PngEncoder, OpaquePicturesComeBackAsTheyAreAndHaveNoAlphaInTheFile) {
    for (const PngProfile profile : {PngProfile::quick, PngProfile::compact}) {
        for (const PixelSize size : sizes) {
            const Bitmap original = testPicture(size, Alpha::opaque);
            const auto file = encodePng(original, profile);
            ASSERT_TRUE(file);
            EXPECT_EQ(std::to_integer<int>(file->data()[25]), PNG_COLOR_TYPE_RGB);
            const Rgba reference = readWithLibPng(file->span());
            for (int y = 0, i = 0; y < size.height; ++y) {
                for (const Bitmap::Pixel pixel : original.row(y)) {
                    const auto* at = &reference[static_cast<std::size_t>(i++) * 4];
                    ASSERT_EQ(pixel,
                              0xff000000U | Bitmap::Pixel{at[0]} << 16 | Bitmap::Pixel{at[1]} << 8 | at[2]);
                }
            }
            EXPECT_EQ(PngDecoder::over(file->span())->decode().value(), original);
        }
    }
}

TEST(PngEncoder, TranslucentPicturesComeBackToTheBit) {
    for (const PixelSize size : sizes) {
        const Bitmap original = testPicture(size, Alpha::any);
        const auto file = encodePng(original, PngProfile::compact);
        ASSERT_TRUE(file);
        EXPECT_EQ(std::to_integer<int>(file->data()[25]), PNG_COLOR_TYPE_RGBA);
        static_cast<void>(readWithLibPng(file->span()));
        EXPECT_EQ(PngDecoder::over(file->span())->decode().value(), original);
    }
}

TEST(PngEncoder, EveryPremultipliedValueSurvives) {
    Bitmap all({256, 256}); // each component at each alpha
    for (Bitmap::Pixel alpha = 0; alpha < 256; ++alpha) {
        for (Bitmap::Pixel value = 0; value < 256; ++value)
            all.row(static_cast<int>(alpha))[value] = alpha << 24 | std::min(value, alpha) * 0x10101;
    }
    EXPECT_EQ(PngDecoder::over(encodePng(all, PngProfile::quick)->span())->decode().value(), all);
}

TEST(PngEncoder, NoiseGrowsLittleAndFlatColourShrinksToNothing) {
    Bitmap noise({700, 500});
    Bitmap flat({3840, 2160});
    std::mt19937 random(3);
    for (int y = 0; y < noise.height(); ++y)
        std::ranges::generate(noise.row(y),
                              [&] { return static_cast<Bitmap::Pixel>(random()) | 0xff000000; });
    for (int y = 0; y < flat.height(); ++y)
        std::ranges::fill(flat.row(y), 0xff336699);
    for (const PngProfile profile : {PngProfile::quick, PngProfile::compact}) {
        EXPECT_LT(encodePng(noise, profile)->size(), 700U * 500 * 3 * 101 / 100);
        EXPECT_LT(encodePng(flat, profile)->size(), 150'000U);
    }
}

TEST(PngEncoder, RefusesWhatIsNoPicture) {
    EXPECT_EQ(encodePng(Bitmap(), PngProfile::quick).error().code(),
              static_cast<int>(PngError::emptyPicture));
    Bitmap::Pixel pixel = 0;
    const Bitmap wide({65536, 1}, 0, &pixel, nullptr);
    EXPECT_EQ(encodePng(wide, PngProfile::quick).error().code(), static_cast<int>(PngError::tooLarge));
}

} // namespace
} // namespace glimmerly

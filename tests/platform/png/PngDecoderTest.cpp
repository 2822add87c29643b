#include "platform/png/PngDecoder.h"

#include "platform/png/PngChunks.h"
#include "platform/png/PngEncoder.h"
#include "platform/png/PngError.h"
#include "tests/platform/png/LibPng.h"
#include "tests/platform/png/TestPictures.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace glimmerly {
namespace {

Bitmap::Pixel premultiplied(const std::uint8_t* rgba) {
    const auto scaled = [&](Bitmap::Pixel component) { return (component * rgba[3] + 127) / 255; };
    return Bitmap::Pixel{rgba[3]} << 24 | scaled(rgba[0]) << 16 | scaled(rgba[1]) << 8 | scaled(rgba[2]);
}

TEST(PngDecoder, ReadsEveryKindOfPng) {
    const std::vector<PngKind> kinds{
        {PNG_COLOR_TYPE_GRAY, 1, 0},       {PNG_COLOR_TYPE_GRAY, 4, 1},    {PNG_COLOR_TYPE_GRAY, 8, 0},
        {PNG_COLOR_TYPE_PALETTE, 2, 0},    {PNG_COLOR_TYPE_PALETTE, 8, 1}, {PNG_COLOR_TYPE_RGB, 8, 0},
        {PNG_COLOR_TYPE_RGB, 8, 1},        {PNG_COLOR_TYPE_RGBA, 8, 0},    {PNG_COLOR_TYPE_RGBA, 8, 1},
        {PNG_COLOR_TYPE_GRAY_ALPHA, 8, 1},
    };
    for (const PngKind& kind : kinds) {
        for (const PixelSize size : {PixelSize{1, 1}, PixelSize{5, 3}, PixelSize{61, 47}}) {
            SCOPED_TRACE(testing::Message() << kind.colourType << " " << kind.bitDepth << " " << size.width);
            const auto file = writeWithLibPng(kind, size);
            const Rgba reference = readWithLibPng(file);
            const auto decoder = PngDecoder::over(file);
            ASSERT_TRUE(decoder);
            ASSERT_EQ(decoder->size(), size);
            const auto decoded = decoder->decode();
            ASSERT_TRUE(decoded);
            const Bitmap& picture = *decoded;
            const std::uint8_t* expected = reference.data();
            for (int y = 0; y < size.height; ++y) {
                for (const Bitmap::Pixel pixel : picture.row(y)) {
                    ASSERT_EQ(pixel, premultiplied(expected)) << y;
                    expected += 4;
                }
            }
        }
    }
}

TEST(PngDecoder, KeepsTheHighBytesOfSixteenBitSamples) {
    const auto file = writeWithLibPng({PNG_COLOR_TYPE_RGB, 16, 0}, {9, 4});
    const Bitmap picture = PngDecoder::over(file)->decode().value();
    std::mt19937 random(11);
    for (int y = 0; y < 4; ++y) {
        for (const Bitmap::Pixel pixel : picture.row(y)) {
            for (const int shift : {16, 8, 0}) {
                const int high = static_cast<std::uint8_t>(random());
                random();
                EXPECT_NEAR(static_cast<int>(pixel >> shift & 255), high, 1);
            }
        }
    }
}

TEST(PngDecoder, DecodesIntoThePlaceGivenAndNowhereElse) {
    const Bitmap original = testPicture({40, 30}, Alpha::opaque);
    const auto file = encodePng(original, PngProfile::quick);
    Bitmap taller({40, 34});
    for (int y = 0; y < taller.height(); ++y)
        std::ranges::fill(taller.row(y), 0x12345678);
    ASSERT_TRUE(PngDecoder::over(file->span())->decodeInto(taller.view({0, 2, 40, 30})));
    EXPECT_EQ(taller.view({0, 2, 40, 30}), original);
    for (const int y : {0, 1, 32, 33})
        EXPECT_EQ(std::ranges::count(taller.row(y), 0x12345678U), 40) << y;
}

TEST(PngDecoder, ReportsFilesThatCannotBeRead) {
    const ScratchDirectory directory;
    EXPECT_EQ(PngDecoder::open(directory.path() / "missing.png").error().domain(), "POSIX");
    EXPECT_EQ(PngDecoder::open(directory.path()).error().code(), static_cast<int>(PngError::notPng));
    ASSERT_EQ(::mkfifo((directory.path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(PngDecoder::open(directory.path() / "pipe").error().code(), static_cast<int>(PngError::notPng));
    writeContent(directory.path() / "text.png", "no picture at all, but longer than a header");
    EXPECT_EQ(PngDecoder::open(directory.path() / "text.png").error().code(),
              static_cast<int>(PngError::notPng));
    writeContent(directory.path() / "empty.png", "");
    EXPECT_FALSE(PngDecoder::open(directory.path() / "empty.png"));
}

TEST(PngDecoder, RefusesSizesBeyondItsBounds) {
    auto file = writeWithLibPng({PNG_COLOR_TYPE_GRAY, 8, 0}, {1, 1});
    const auto withSize = [&](std::uint8_t widthHigh, std::uint8_t heightHigh) {
        auto changed = file;
        changed[17] = std::byte{widthHigh}; // 65536 pixels each
        changed[21] = std::byte{heightHigh};
        auto sum = static_cast<png_uint_32>(crc32(0, reinterpret_cast<const Bytef*>(&changed[12]), 17));
        for (std::size_t i = 0; i < 4; ++i)
            changed[29 + i] = static_cast<std::byte>(sum >> (24 - 8 * i));
        return PngDecoder::over(changed);
    };
    EXPECT_EQ(withSize(1, 0).error().code(), static_cast<int>(PngError::tooLarge));
    EXPECT_EQ(withSize(0, 1).error().code(), static_cast<int>(PngError::tooLarge));
    EXPECT_EQ(withSize(0, 0)->size(), (PixelSize{1, 1}));
}

TEST(PngDecoder, ReportsDamageWhereverItTouchesPixels) {
    const auto file = encodePng(testPicture({60, 50}, Alpha::opaque), PngProfile::compact);
    for (std::size_t cut = 0; cut < file->size() - pngTailSize; cut += 7) {
        const auto decoder = PngDecoder::over(file->span().first(cut));
        EXPECT_FALSE(decoder && decoder->decode()) << cut;
    }
    for (std::size_t at = pngHeadSize; at < file->size() - pngTailSize; at += 5) {
        std::vector<std::byte> changed(file->span().begin(), file->span().end());
        changed[at] ^= std::byte{0x10};
        const auto decoder = PngDecoder::over(changed);
        EXPECT_FALSE(decoder && decoder->decode()) << at;
    }
}

} // namespace
} // namespace glimmerly

#include "platform/png/PngDecoder.h"

#include "platform/png/PngChunks.h"
#include "platform/png/PngEncoder.h"
#include "platform/png/PngError.h"
#include "tests/platform/png/LibPng.h"
#include "tests/platform/png/TestPictures.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <zlib.h>

namespace glimmerly {
namespace {

Bitmap::Pixel premultiplied(const std::uint8_t* rgba) {
    const auto scaled = [&](Bitmap::Pixel component) { return (component * rgba[3] + 127) / 255; };
    return Bitmap::Pixel{rgba[3]} << 24 | scaled(rgba[0]) << 16 | scaled(rgba[1]) << 8 | scaled(rgba[2]);
}

TEST(PngDecoder, ReadsEveryKindOfPng) {
    for (const auto& entry : std::filesystem::directory_iterator(GLIMMERLY_PNG_FILES)) {
        SCOPED_TRACE(entry.path());
        if (entry.path().filename() == "gray16.png") // there are several ways to round its samples
            continue;
        const std::string file = contentOf(entry.path());
        const Rgba reference = readWithLibPng(std::as_bytes(std::span(file)));
        const auto decoder = PngDecoder::open(entry.path());
        ASSERT_TRUE(decoder);
        const auto decoded = decoder->decode();
        ASSERT_TRUE(decoded);
        ASSERT_EQ(reference.size(), 4U * static_cast<unsigned>(decoded->width() * decoded->height()));
        const std::uint8_t* expected = reference.data();
        for (int y = 0; y < decoded->height(); ++y) {
            for (const Bitmap::Pixel pixel : decoded->row(y)) {
                ASSERT_EQ(pixel, premultiplied(expected)) << y;
                expected += 4;
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
    const auto file = encodePng(testPicture({1, 1}, Alpha::opaque), PngProfile::quick);
    const auto withSize = [&](std::uint8_t widthHigh, std::uint8_t heightHigh) {
        std::vector<std::byte> changed(file->span().begin(), file->span().end());
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

#include "platform/png/StoredPng.h"

#include "platform/files/AtomicFile.h"
#include "platform/png/PngDecoder.h"
#include "platform/png/PngError.h"
#include "tests/platform/png/LibPng.h"
#include "tests/platform/png/TestPictures.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>

namespace glimmerly {
namespace {

class StoredPngTest : public testing::Test {
protected:
    std::string fileOf(const Bitmap& picture) {
        const auto path = directory.path() / "stored.png";
        const auto png = StoredPng::of(picture);
        EXPECT_TRUE(png);
        EXPECT_TRUE(
            writeFileAtomically(path, [&](const FileDescriptor& file) { return png->writeTo(file); }));
        return contentOf(path);
    }
    static std::span<const std::byte> bytes(const std::string& content) {
        return std::as_bytes(std::span(content));
    }

    ScratchDirectory directory;
};

TEST_F(StoredPngTest, ComesBackOpaqueFromTheFileAndIsAnOrdinaryPng) {
    for (const PixelSize size :
         {PixelSize{1, 1}, PixelSize{7, 3}, PixelSize{130, 500}, PixelSize{21844, 3}}) {
        const Bitmap picture = testPicture(size, Alpha::undefined);
        const std::string content = fileOf(picture);
        const Rgba reference = readWithLibPng(bytes(content));
        Bitmap decoded(size);
        ASSERT_EQ(readStoredPng(PngSource(bytes(content)), decoded), StoredPngReading::done);
        const auto fromFile = PngDecoder::open(directory.path() / "stored.png");
        ASSERT_TRUE(fromFile);
        EXPECT_EQ(fromFile->decode().value(), decoded);
        const std::uint8_t* expected = reference.data();
        for (int y = 0; y < size.height; ++y) {
            for (std::size_t x = 0; x < decoded.row(y).size(); ++x, expected += 4) {
                ASSERT_EQ(decoded.row(y)[x], picture.row(y)[x] | 0xff000000U);
                ASSERT_EQ(decoded.row(y)[x], 0xff000000U | Bitmap::Pixel{expected[0]} << 16 |
                                                 Bitmap::Pixel{expected[1]} << 8 | expected[2]);
            }
        }
    }
}

TEST_F(StoredPngTest, NoDamageToSizeOrPixelsGoesUnnoticed) {
    const std::string content = fileOf(testPicture({20, 3000}, Alpha::opaque)); // three bands
    const std::vector<std::size_t> places{8, 20, 30, 60, 64, 68, 69, 70, 73, 74, 1000, 65000, 66000, 130000};
    for (const std::size_t at : places) {
        std::string changed = content;
        changed[at] = static_cast<char>(changed[at] ^ 1);
        const auto decoder = PngDecoder::over(bytes(changed));
        EXPECT_FALSE(decoder && decoder->decode()) << at;
    }
    for (const std::size_t length : {content.size() - 60, std::size_t{70000}, std::size_t{100}}) {
        const auto decoder = PngDecoder::over(bytes(content).first(length));
        EXPECT_FALSE(decoder && decoder->decode()) << length;
    }
}

TEST_F(StoredPngTest, RefusesWhatItCannotHold) {
    EXPECT_EQ(StoredPng::of(Bitmap()).error().code(), static_cast<int>(PngError::emptyPicture));
    Bitmap::Pixel pixel = 0;
    EXPECT_EQ(StoredPng::of(Bitmap({21845, 1}, 0, &pixel, nullptr)).error().code(),
              static_cast<int>(PngError::tooLarge));
}

TEST_F(StoredPngTest, ReportsAFullDisk) {
    const auto png = StoredPng::of(testPicture({500, 500}, Alpha::opaque));
    const FileDescriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(full);
    const auto outcome = png->writeTo(full);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().code(), ENOSPC);
}

} // namespace
} // namespace glimmerly

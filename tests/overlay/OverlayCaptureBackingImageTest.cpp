#include "overlay/backing/OverlayCaptureBackingImage.h"

#include "tests/support/FakeScreens.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TestPictures.h"

#include <gtest/gtest.h>

#include <limits>

namespace glimmerly {
namespace {

class OverlayCaptureBackingImageTest : public testing::Test {
protected:
    OverlayCaptureBackingImage load(double heightPoints, double scale = 1) {
        FakeScreens screens({FakeScreens::display({100, 100}, scale)});
        return OverlayCaptureBackingImage::load(file, heightPoints, screens);
    }
    std::vector<std::string> warnings() {
        std::vector<std::string> messages;
        for (const LogRecord& record : log.records()) {
            EXPECT_EQ(record.level, GlimmerlyLog::Level::warning);
            EXPECT_EQ(record.category, "OverlayCaptureBacking");
            EXPECT_EQ(record.metadata->at("path"), "glimmerly-capture-1.png");
            messages.push_back(record.message);
        }
        return messages;
    }

    ScratchDirectory directory;
    LogCapture log;
    std::filesystem::path file = directory.path() / "glimmerly-capture-1.png";
};

TEST_F(OverlayCaptureBackingImageTest, RepeatsTheEdgesToTheCanvasHeight) {
    const struct {
        const char* what;
        PixelSize captured;
        double heightPoints;
        double scale;
        int above;
        int below;
    } cases[] = {
        {"one row, three missing", {5, 1}, 4, 1, 1, 2},
        {"one missing", {5, 9}, 10, 1, 0, 1},
        {"one point on each side at 2x", {6, 20}, 12, 2, 2, 2},
        {"a fraction of a row", {5, 10}, 10, 1.25, 1, 2},
        {"half a row more", {2, 1080}, 1080 / 1.75 + 2, 1.75, 2, 2},
        {"three rows and a hair of rounding", {2, 766}, 766 / 1.5 + 2, 1.5, 1, 2},
        {"tall enough", {5, 10}, 10, 1, 0, 0},
        {"taller than needed", {5, 30}, 10, 1, 0, 0},
        {"thin and tall", {1, 300}, 302, 1, 1, 1},
    };
    for (const auto& [what, captured, heightPoints, scale, above, below] : cases) {
        SCOPED_TRACE(what);
        const Bitmap picture = noisePicture(captured);
        writePng(file, picture);
        const auto loaded = load(heightPoints, scale);
        ASSERT_TRUE(loaded.backgroundImage && loaded.backgroundImageExpanded);
        const Bitmap& expanded = loaded.backgroundImageExpanded->bitmap;
        ASSERT_EQ(imagePixelSize(*loaded.backgroundImageExpanded),
                  PixelSize(captured.width, captured.height + above + below));
        EXPECT_EQ(expanded.view({0, above, captured.width, captured.height}), picture);
        for (int y = 0; y < above; ++y)
            EXPECT_EQ(expanded.view({0, y, captured.width, 1}),
                      picture.view({0, captured.height - 1, captured.width, 1}));
        for (int y = above + captured.height; y < expanded.height(); ++y)
            EXPECT_EQ(expanded.view({0, y, captured.width, 1}), picture.view({0, 0, captured.width, 1}));
        EXPECT_EQ(loaded.backgroundImageExpanded->size,
                  Size(captured.width / scale, expanded.height() / scale));
        EXPECT_EQ(loaded.backgroundImage->size, Size(captured.width / scale, captured.height / scale));
        EXPECT_EQ(loaded.backgroundImage->bitmap, picture);
        EXPECT_EQ(loaded.backgroundImage->bitmap.row(0).data(), expanded.row(above).data()) << "decoded once";
    }
    EXPECT_TRUE(log.records().empty());
}

TEST_F(OverlayCaptureBackingImageTest, AMissingOrDamagedFileIsWarnedOfForEachPicture) {
    EXPECT_FALSE(load(42).backgroundImage);
    writePng(file, noisePicture({40, 40}));
    std::filesystem::resize_file(file, std::filesystem::file_size(file) / 2);
    const auto cut = load(42);
    EXPECT_FALSE(cut.backgroundImage || cut.backgroundImageExpanded);
    writeContent(file, "certainly not a picture");
    EXPECT_FALSE(load(42).backgroundImage);
    const std::string noImage = "NSImage(contentsOf:) failed for capture PNG";
    const std::string noDecode = "ImageIO decode failed";
    const std::vector<std::string> expected{"Missing capture file before decode",
                                            "Missing capture file before ImageIO decode",
                                            noImage,
                                            noDecode,
                                            noImage,
                                            noDecode};
    EXPECT_EQ(warnings(), expected);
}

TEST_F(OverlayCaptureBackingImageTest, UnusableScaleLeavesTheCaptureUnexpanded) {
    const Bitmap picture = noisePicture({7, 3});
    writePng(file, picture);
    for (const double scale :
         {0.0, -2.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        const auto loaded = load(5, scale);
        ASSERT_TRUE(loaded.backgroundImage) << scale;
        EXPECT_EQ(loaded.backgroundImage->bitmap, picture);
        EXPECT_FALSE(loaded.backgroundImageExpanded) << scale;
    }
}

} // namespace
} // namespace glimmerly

#include "overlay/export/OverlayCanvasSelectionExport.h"

#include "tests/overlay/CanvasOnDisplay.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <random>

namespace glimmerly {
namespace {

TEST(PixelCropRect, RoundsOutwardsAndStaysWithinThePicture) {
    const OverlayImage image{noisePicture({200, 104}), {100, 52}}; // at 2x, one point below the bounds' edges
    const Rect bounds{0, 0, 100, 54};
    const struct {
        const char* what;
        Rect selection;
        std::optional<PixelRect> expected;
    } cases[] = {
        {"whole points", {10, 11, 20, 5}, PixelRect{20, 74, 40, 10}},
        {"parts of pixels", {10.2, 11.4, 20, 5}, PixelRect{20, 73, 41, 11}},
        {"within a pixel", {10.05, 11.05, 0.6, 0.6}, PixelRect{20, 82, 2, 2}},
        {"beyond every edge", {-50, -50, 500, 500}, PixelRect{0, 0, 200, 104}},
        {"outside", {100, 10, 50, 10}, std::nullopt},
        {"half a point inside", {99.5, 10, 50, 10}, std::nullopt},
        {"more than half a point inside", {99.25, 10, 50, 10}, PixelRect{198, 66, 2, 20}},
        {"beside the picture but in the bounds", {10, 0, 20, 1.5}, std::nullopt},
    };
    for (const auto& [what, selection, expected] : cases)
        EXPECT_EQ(pixelCropRect(image, selection, bounds), expected) << what;
    EXPECT_FALSE(pixelCropRect({image.bitmap, {0, 52}}, {10, 10, 20, 20}, bounds));
    EXPECT_FALSE(pixelCropRect({{}, {100, 52}}, {10, 10, 20, 20}, bounds));
}

TEST(SelectionExport, NeedsASelectionOfTheMinimumSizeAndAPicture) {
    const OverlayImage image{noisePicture({100, 52}), {100, 52}};
    SelectionExport source{
        .selection = Rect{10, 10, 2, 2}, .image = image, .minimumSize = 2, .bounds = {0, 0, 100, 52}};
    EXPECT_EQ(croppedSelectionImage(source), image.bitmap.view({10, 40, 2, 2}));
    source.selection = Rect{30, 30, -20, -20};
    EXPECT_EQ(croppedSelectionImage(source), image.bitmap.view({10, 22, 20, 20}));
    for (const Rect tooSmall : {Rect{10, 10, 1.9, 50}, Rect{10, 10, 50, -1.9}, Rect{200, 10, 50, 50}}) {
        source.selection = tooSmall;
        EXPECT_FALSE(croppedSelectionImage(source));
    }
    source.selection.reset();
    EXPECT_FALSE(croppedSelectionImage(source));
    source.selection = Rect{10, 10, 20, 20};
    source.image.reset();
    EXPECT_FALSE(croppedSelectionImage(source));
}

TEST(SelectionExport, CopiesExactlyTheDisplayPixelsUnderTheDrag) {
    std::mt19937 random(11);
    for (const double scale : {1.0, 1.1, 1.25, 4.0 / 3, 1.5, 1.75, 2.0, 2.4}) {
        CanvasOnDisplay canvas({181, 127}, scale);
        const PixelPoint last{180, 126};
        std::vector<std::pair<PixelPoint, PixelPoint>> drags = {{{0, 0}, last},
                                                                {{last.x, 0}, {0, last.y}},
                                                                {{-40, -9}, {900, 900}},
                                                                {{0, 90}, {60, last.y}},
                                                                {{100, 0}, last}};
        for (int i = 0; i < 15; ++i) {
            const auto x = [&] { return std::uniform_int_distribution(0, last.x)(random); };
            const auto y = [&] { return std::uniform_int_distribution(0, last.y)(random); };
            drags.push_back({{x(), y()}, {x(), y()}});
        }
        for (const auto& [from, to] : drags) {
            // Pixels from the one to before the other; the last ones belong to it.
            const auto edge = [](int at, int end) { return at >= end ? end + 1 : std::max(at, 0); };
            const auto [left, right] = std::minmax({edge(from.x, last.x), edge(to.x, last.x)});
            const auto [top, bottom] = std::minmax({edge(from.y, last.y), edge(to.y, last.y)});
            const int least = static_cast<int>(std::ceil(2 * scale));
            if (right - left < least || bottom - top < least)
                continue;
            CanvasOnDisplay fresh({181, 127}, scale);
            fresh.select(from, to);
            ASSERT_TRUE(fresh.view->writeCroppedImageToPasteboard());
            ASSERT_EQ(*fresh.pasteboard.image, canvas.capture.view({left, top, right - left, bottom - top}))
                << scale;
            EXPECT_EQ(fresh.pasteboard.imageSize, Size(right - left, bottom - top));
        }
    }
}

TEST(SelectionExport, ReportsWhatThePasteboardAnswers) {
    LogCapture log;
    CanvasOnDisplay canvas({100, 50});
    EXPECT_FALSE(canvas.view->writeCroppedImageToPasteboard()) << "no selection";
    EXPECT_TRUE(log.records().empty());
    canvas.select({10, 10}, {30, 30});
    canvas.pasteboard.outcome = PasteboardOutcome::refused;
    EXPECT_FALSE(canvas.view->writeCroppedImageToPasteboard());
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].level, GlimmerlyLog::Level::error);
    EXPECT_EQ(log.records()[0].category, "OverlayExport");
    EXPECT_EQ(log.records()[0].message, "writeCroppedImageToPasteboard returned false");
}

} // namespace
} // namespace glimmerly

#include "overlay/export/OverlayCanvasSelectionExport.h"

#include "tests/support/TestPictures.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace glimmerly

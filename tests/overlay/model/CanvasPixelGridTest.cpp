#include "overlay/model/CanvasPixelGrid.h"

#include "base/Overhang.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

constexpr double scales[] = {1, 1.1, 1.25, 4.0 / 3, 1.5, 1.75, 2, 2.4, 3};
constexpr PixelSize displays[] = {{1920, 1080}, {3840, 2160}, {1366, 768}, {1279, 801}};

Rect canvasBounds(PixelSize display, double scale) {
    return {0, 0, display.width / scale, display.height / scale + 2};
}

TEST(CanvasPixelGrid, CapturedPixelsLieOverTheLiveOnes) {
    for (const double scale : scales) {
        for (const PixelSize display : displays) {
            const Rect bounds = canvasBounds(display, scale);
            const Overhang beyond = overhang(bounds.height, scale, display.height);
            const PixelSize expanded{display.width, display.height + beyond.total()};
            const CanvasPixelGrid grid(bounds, scale, display, expanded);
            EXPECT_EQ(grid.window(), expanded);
            EXPECT_EQ(grid.display(), PixelRect(0, beyond.top, display.width, display.height));
            EXPECT_EQ(grid.picture(), PixelRect(0, 0, expanded.width, expanded.height));
            // The canvas and the picture in it share their centre; the window is the picture rounded up.
            const Point top = grid.point({0, 0});
            EXPECT_NEAR(top.x, 0, 1e-9);
            EXPECT_NEAR(top.y - bounds.height, (expanded.height / scale - bounds.height) / 2, 1e-9);
            EXPECT_EQ(grid.pixels(bounds), PixelRect(0, 0, expanded.width, expanded.height));
        }
    }
}

TEST(CanvasPixelGrid, PointsAndPixelsAgreeEverywhere) {
    for (const double scale : scales) {
        const PixelSize display{1920, 1080};
        const CanvasPixelGrid grid(canvasBounds(display, scale), scale, display, std::nullopt);
        for (int i = 0; i < 1080; ++i) {
            const PixelPoint pixel{(i * 7) % 1920, i};
            const Point corner = grid.point(pixel);
            const Point opposite = grid.point({pixel.x + 3, pixel.y + 2});
            ASSERT_EQ(grid.pixels(Rect::fromCorners(corner, opposite)), PixelRect(pixel.x, pixel.y, 3, 2))
                << scale;
        }
    }
}

TEST(CanvasPixelGrid, PointerReachesEveryEdgeOfTheDisplayAndNoFurther) {
    for (const double scale : scales) {
        const PixelSize display{1920, 1080};
        const CanvasPixelGrid grid(canvasBounds(display, scale), scale, display, std::nullopt);
        const PixelRect own = grid.display();
        const auto dragged = [&](PixelPoint from, PixelPoint to) {
            return grid.pixels(Rect::fromCorners(grid.pointerPoint(from), grid.pointerPoint(to)));
        };
        const PixelPoint first{own.x, own.y};
        const PixelPoint last{own.maxX() - 1, own.maxY() - 1};
        EXPECT_EQ(dragged(first, last), own);
        EXPECT_EQ(dragged(last, first), own);
        EXPECT_EQ(dragged({-300, -300}, {5000, 5000}), own) << "a pointer on a neighbouring display";
        EXPECT_EQ(dragged({10, own.y + 20}, {14, own.y + 21}), PixelRect(10, own.y + 20, 4, 1));
        EXPECT_EQ(dragged({last.x - 1, last.y - 1}, last), PixelRect(last.x - 1, last.y - 1, 2, 2));
    }
}

TEST(CanvasPixelGrid, PictureOfAnotherDisplayIsCentredOnWholePixels) {
    // Captured on one display, shown on the one that the mouse went to meanwhile.
    const CanvasPixelGrid grid(canvasBounds({1920, 1080}, 1), 1, {1920, 1080}, PixelSize{1281, 1083});
    EXPECT_EQ(grid.picture(), PixelRect(319, -1, 1281, 1083));
    const Rect area = centredRect({1281, 1083}, canvasBounds({1920, 1080}, 1));
    EXPECT_EQ(grid.pixels(area), grid.picture());
}

} // namespace
} // namespace glimmerly

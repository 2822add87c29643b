#include "overlay/toolbar/OverlayCanvasToolbarLayout.h"

#include <gtest/gtest.h>

namespace glimmerly {

void PrintTo(const Point& point, std::ostream* out) {
    *out << "(" << point.x << ", " << point.y << ")";
}

namespace {

constexpr Size toolbar{509, 44};
constexpr Rect canvas{0, 0, 1440, 900};

TEST(OverlayCanvasToolbarLayout, HangsBelowTheSelectionWithinTheCanvas) {
    struct Case {
        const char* name;
        Rect anchor;
        Rect bounds;
        Point origin;
    };
    constexpr Case cases[] = {
        {"below, right edges aligned", {100, 300, 600, 300}, canvas, {191, 246}},
        {"no room below", {100, 30, 600, 300}, canvas, {191, 8}},
        {"no room on the left", {100, 300, 200, 300}, canvas, {8, 246}},
        {"right edge of the canvas", {900, 300, 540, 300}, canvas, {923, 246}},
        {"drawn from right to left", {700, 600, -600, -300}, canvas, {191, 246}},
        {"canvas too narrow and too low", {0, 0, 300, 40}, {0, 0, 300, 40}, {8, 8}},
        {"canvas that begins elsewhere", {100, 100, 600, 300}, {50, 60, 800, 600}, {191, 68}},
    };
    for (const Case& test : cases) {
        OverlayCanvasToolbarLayout layout;
        EXPECT_EQ(layout.layoutToolbar(toolbar, test.anchor, test.bounds), test.origin) << test.name;
        EXPECT_FALSE(layout.hasMovedBefore());
    }
    EXPECT_FALSE(OverlayCanvasToolbarLayout().layoutToolbar(toolbar, std::nullopt, canvas));
}

TEST(OverlayCanvasToolbarLayout, StaysWhereItWasDraggedButInsideTheCanvas) {
    OverlayCanvasToolbarLayout layout;
    const Rect anchor{100, 300, 600, 300};
    EXPECT_EQ(layout.moveToolbarBy(30, 100, {191, 246, 509, 44}, canvas), (Point{221, 346}));
    EXPECT_EQ(layout.layoutToolbar(toolbar, anchor, canvas), (Point{221, 346}));
    EXPECT_EQ(layout.layoutToolbar(toolbar, Rect{0, 0, 50, 50}, canvas), (Point{221, 346}));
    EXPECT_FALSE(layout.layoutToolbar(toolbar, std::nullopt, canvas));

    const Rect smaller{0, 0, 640, 300};
    EXPECT_EQ(layout.layoutToolbar(toolbar, anchor, smaller), (Point{123, 248}));
    EXPECT_EQ(layout.layoutToolbar(toolbar, anchor, canvas), (Point{123, 248})) << "kept as clamped";
}

TEST(OverlayCanvasToolbarLayout, ADragHeldAgainstAnEdgeDoesNotAccumulate) {
    OverlayCanvasToolbarLayout layout;
    Rect frame{20, 20, 509, 44};
    const auto drag = [&](double dx, double dy) {
        const Point origin = layout.moveToolbarBy(dx, dy, frame, canvas);
        frame = {origin.x, origin.y, frame.width, frame.height};
        return origin;
    };
    EXPECT_EQ(drag(-500, -500), (Point{8, 8}));
    EXPECT_EQ(drag(-500, 0), (Point{8, 8}));
    EXPECT_EQ(drag(5, 7), (Point{13, 15}));
    EXPECT_EQ(drag(5000, 5000), (Point{1432 - 509, 892 - 44}));
}

} // namespace
} // namespace glimmerly

#include "overlay/model/RectResizing.h"

#include <gtest/gtest.h>

#include <ostream>

namespace glimmerly {

void PrintTo(const Rect& r, std::ostream* out) {
    *out << "(" << r.x << ", " << r.y << ", " << r.width << ", " << r.height << ")";
}

namespace {

using enum SelectionHandle;
constexpr Rect screen{0, 0, 1440, 902};

TEST(RectResizing, EachHandleMovesItsOwnEdgesWithinTheBounds) {
    constexpr Rect start{100, 200, 300, 100}; // x 100..400, y 200..300
    const struct {
        const char* what;
        Rect start;
        SelectionHandle handle;
        Point mouse;
        Rect expected;
    } cases[] = {
        {"nw", start, nw, {350, 260}, {350, 200, 50, 60}},
        {"n", start, n, {350, 260}, {100, 200, 300, 60}},
        {"ne", start, ne, {350, 260}, {100, 200, 250, 60}},
        {"e", start, e, {350, 260}, {100, 200, 250, 100}},
        {"se", start, se, {350, 260}, {100, 260, 250, 40}},
        {"s", start, s, {350, 260}, {100, 260, 300, 40}},
        {"sw", start, sw, {350, 260}, {350, 260, 50, 40}},
        {"w", start, w, {350, 260}, {350, 200, 50, 100}},
        {"past the opposite edge", start, e, {50, 0}, {50, 200, 50, 100}},
        {"past the opposite corner", start, se, {50, 400}, {50, 300, 50, 100}},
        {"of negative size", {300, 150, -100, -50}, w, {210, 0}, {210, 100, 90, 50}},
        {"beyond the top right", start, ne, {2000, 2000}, {100, 200, 1340, 702}},
        {"beyond the bottom left", start, sw, {-20, -1}, {0, 0, 400, 300}},
        {"too small to be kept: shown as it is", start, e, {101, 0}, {100, 200, 1, 100}},
        {"too small by the bounds", {1439, 100, 1, 50}, w, {1450, 0}, {1438, 100, 2, 50}},
    };
    for (const auto& [what, from, handle, mouse, expected] : cases)
        EXPECT_EQ(resizedRect(from, handle, mouse, screen, 2), expected) << what;
}

TEST(RectResizing, ClampingWidensWhatTheBoundsLeave) {
    const struct {
        const char* what;
        Rect rect;
        Rect expected;
    } cases[] = {
        {"1 point left inside on the left", {-4, 10, 5, 50}, {0, 10, 2, 50}},
        {"1 point left inside on the right", {1439, 10, 5, 50}, {1438, 10, 2, 50}},
        {"1 point left inside at the bottom", {10, -4, 50, 5}, {10, 0, 50, 2}},
        {"1 point left inside at the top", {10, 901, 50, 5}, {10, 900, 50, 2}},
        {"only 1 wide to begin with", {-4, 10, 1, 50}, {-4, 10, 1, 50}},
        {"exactly the minimum", {-1, 10, 2, 2}, {0, 10, 2, 2}},
        {"inside", {10, 10, 20, 20}, {10, 10, 20, 20}},
    };
    for (const auto& [what, rect, expected] : cases)
        EXPECT_EQ(clampRectToBounds(rect, screen, 2), expected) << what;
    // Bounds narrower than the minimum: neither bound gives way.
    EXPECT_EQ(clampRectToBounds({0, 0, 10, 10}, {4, 0, 1, 100}, 2), Rect(4, 0, 1, 10));
}

TEST(RectResizing, MinimumIsMetByPixelsOfFractionalScales) {
    for (const double scale : {1.1, 1.25, 4.0 / 3, 1.5, 1.75, 2.0, 2.4}) {
        const double minimum = 3 / scale; // three pixels, wherever they lie
        for (int pixel = 0; pixel < 4000; ++pixel) {
            const Rect rect = Rect::fromCorners({pixel / scale, 0}, {(pixel + 3) / scale, 50});
            ASSERT_FALSE(isSmallerThan(rect, minimum)) << scale << " " << pixel;
        }
    }
    EXPECT_TRUE(isSmallerThan({0, 0, 1.9, 50}, 2));
    EXPECT_TRUE(isSmallerThan({0, 0, -50, -1.9}, 2));
    EXPECT_FALSE(isSmallerThan({0, 0, -2, 2}, 2));
}

} // namespace
} // namespace glimmerly

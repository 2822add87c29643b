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

TEST(RectResizing, EachHandleMovesItsOwnEdges) {
    constexpr Rect start{100, 200, 300, 100}; // x 100..400, y 200..300
    constexpr Point mouse{350, 260};
    const struct {
        SelectionHandle handle;
        Rect expected;
    } cases[] = {
        {nw, {350, 200, 50, 60}},  {n, {100, 200, 300, 60}},  {ne, {100, 200, 250, 60}},
        {e, {100, 200, 250, 100}}, {se, {100, 260, 250, 40}}, {s, {100, 260, 300, 40}},
        {sw, {350, 260, 50, 40}},  {w, {350, 200, 50, 100}},
    };
    for (const auto& [handle, expected] : cases)
        EXPECT_EQ(resizedRect(start, handle, mouse, screen, 2), expected) << static_cast<int>(handle);
}

TEST(RectResizing, DraggingPastTheOppositeEdgeFlips) {
    EXPECT_EQ(resizedRect({200, 100, 100, 50}, e, {150, 0}, screen, 2), Rect(150, 100, 50, 50));
    EXPECT_EQ(resizedRect({200, 100, 100, 50}, se, {150, 400}, screen, 2), Rect(150, 150, 50, 250));
    EXPECT_EQ(resizedRect({300, 150, -100, -50}, w, {210, 0}, screen, 2), Rect(210, 100, 90, 50));
}

TEST(RectResizing, StaysWithinTheBounds) {
    EXPECT_EQ(resizedRect({200, 100, 100, 50}, ne, {2000, 2000}, screen, 2), Rect(200, 100, 1240, 802));
    EXPECT_EQ(resizedRect({200, 100, 100, 50}, sw, {-20, -1}, screen, 2), Rect(0, 0, 300, 150));
    // Too small to be kept: shown as it is.
    EXPECT_EQ(resizedRect({200, 100, 100, 50}, e, {201, 0}, screen, 2), Rect(200, 100, 1, 50));
    EXPECT_EQ(resizedRect({1439, 100, 1, 50}, w, {1450, 0}, {0, 0, 1440, 902}, 2), Rect(1438, 100, 2, 50));
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

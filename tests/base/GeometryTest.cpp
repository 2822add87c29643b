#include "base/Geometry.h"

#include "base/Clock.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

TEST(Rect, StandardizesNegativeSizesOverTheSameArea) {
    const Rect flipped{10, 20, -4, -6};
    EXPECT_EQ(flipped.standardized(), (Rect{6, 14, 4, 6}));
    EXPECT_EQ(flipped.minX(), 6);
    EXPECT_EQ(flipped.maxY(), 20);
    EXPECT_EQ(flipped.midX(), 8);
}

TEST(Rect, ContainsItsMinimumEdgesOnly) {
    const Rect rect{0, 0, 10, 10};
    EXPECT_TRUE(rect.contains({0, 0}));
    EXPECT_FALSE(rect.contains({10, 5}));
    EXPECT_FALSE(rect.contains({5, 10}));
    EXPECT_FALSE((Rect{3, 3, 0, 5}.contains({3, 4})));
}

TEST(Rect, IntersectionIsEmptyWhenOnlyEdgesTouch) {
    EXPECT_EQ((Rect{0, 0, 10, 10}.intersected({5, -5, 10, 10})), (Rect{5, 0, 5, 5}));
    EXPECT_TRUE((Rect{0, 0, 10, 10}.intersected({10, 0, 5, 5})).isEmpty());
}

TEST(ClampedMilliseconds, TruncatesAndStaysWithinADay) {
    const WallTime start{};
    using std::chrono::hours;
    using std::chrono::microseconds;
    EXPECT_EQ(clampedMilliseconds(start, start + microseconds(1999)), 1);
    EXPECT_EQ(clampedMilliseconds(start, start - microseconds(1999)), 0);
    EXPECT_EQ(clampedMilliseconds(start, start - hours(1)), 0);
    EXPECT_EQ(clampedMilliseconds(start, start + hours(25)), 86'400'000);
}

} // namespace
} // namespace glimmerly

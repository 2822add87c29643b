#include "base/Overhang.h"

#include <gtest/gtest.h>

#include <cmath>

namespace glimmerly {
namespace {

TEST(Overhang, CoversTheHeightAndPutsAnOddRowBelow) {
    const struct {
        int height;
        double scale;
        double points;
        Overhang expected;
    } cases[] = {
        {1080, 1, 1082, {1, 1}},
        {2160, 2, 1082, {2, 2}},
        {1080, 1.25, 866, {1, 2}}, // 1082.5 rows
        {1080, 1.5, 722, {1, 2}},
        {1080, 1.75, 1080 / 1.75 + 2, {2, 2}}, // 1083.5 rows
        {1081, 1.5, 1081 / 1.5 + 2, {1, 2}},   // 1084 rows and a hair
        {1, 1, 4, {1, 2}},
        {1081, 1, 1082, {0, 1}},
        {1082, 1, 1082, {0, 0}},
        {1200, 1, 1082, {0, 0}},
    };
    for (const auto& [height, scale, points, expected] : cases)
        EXPECT_EQ(overhang(points, scale, height), expected) << height << " at " << scale;
    for (const double scale : {0.0, -1.0, std::nan(""), HUGE_VAL})
        EXPECT_EQ(overhang(1082, scale, 1080), Overhang{}) << scale;
}

} // namespace
} // namespace glimmerly

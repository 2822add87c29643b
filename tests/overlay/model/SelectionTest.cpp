#include "overlay/model/Selection.h"

#include "overlay/model/SelectionLayout.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

constexpr Rect screen{0, 0, 1440, 902};

TEST(Selection, IsShownWhileItHasASizeAndCompleteWhenBigEnough) {
    Selection selection;
    selection.beginCreation({100, 100});
    EXPECT_FALSE(selection.visibleRect());
    selection.dragCreation({300, 100});
    EXPECT_FALSE(selection.visibleRect()) << "no height";
    selection.dragCreation({300, 99});
    EXPECT_EQ(selection.visibleRect(), Rect(100, 99, 200, 1));
    selection.endDrag();
    EXPECT_FALSE(selection.toolbarAnchorRect()) << "too low";
}

TEST(SelectionLayout, BandsCoverAllButTheSelection) {
    EXPECT_EQ(
        dimBands({100, 100, 200, 300}, screen),
        (std::vector<Rect>{{0, 0, 100, 902}, {300, 0, 1140, 902}, {100, 0, 200, 100}, {100, 400, 200, 502}}));
    EXPECT_TRUE(dimBands(screen, screen).empty());
}

TEST(SelectionLayout, TagTextsAreWholePoints) {
    EXPECT_EQ(sizeTagText({10, 10, 640.9, -480}), "640 x 480");
    EXPECT_EQ(sizeTagText({10, 10, 640.0 - 1e-11, 1}), "640 x 1") << "the last binary digit is no point";
    EXPECT_EQ(positionTagText({812.8, 344}), "(812, 344)");
    EXPECT_EQ(positionTagText({-0.4, -3.7}), "(0, -3)");
}

TEST(SelectionLayout, TagsKeepFromTheEdges) {
    constexpr Size text{60, 14}; // the pill is 76 x 22
    const struct {
        const char* what;
        Rect pill;
        Point expected;
    } cases[] = {
        {"above the selection", sizeTagRect({100, 100, 200, 300}, text, screen), {106, 406}},
        {"just room above", sizeTagRect({100, 100, 200, 766}, text, screen), {106, 872}},
        {"no room above", sizeTagRect({100, 100, 200, 767}, text, screen), {106, 839}},
        {"at the top edge", sizeTagRect({100, 702, 200, 200}, text, screen), {106, 872}},
        {"at the right edge", sizeTagRect({1400, 100, 40, 40}, text, screen), {1356, 146}},
        {"beyond the left edge", sizeTagRect({-50, 100, 90, 40}, text, screen), {8, 146}},
        {"by the pointer", positionTagRect({500, 500}, text, screen), {510, 510}},
        {"in the corner", positionTagRect({1440, 902}, text, screen), {1356, 872}},
        {"bounds too small: the upper limit wins", positionTagRect({0, 0}, text, {0, 0, 50, 20}), {-34, -10}},
    };
    for (const auto& [what, pill, expected] : cases) {
        EXPECT_EQ(pill.origin(), expected) << what;
        EXPECT_EQ(pill.size(), Size(76, 22)) << what;
    }
}

} // namespace
} // namespace glimmerly

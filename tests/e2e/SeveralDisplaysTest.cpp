// Two displays of different scale: the one under the mouse is captured, at its own pixels.
#include "tests/e2e/support/Session.h"

namespace glimmerly::e2e {
namespace {

struct Arrangement {
    const char* name;
    std::vector<PixelRect> monitors;
    const char* scales;
};

void PrintTo(const Arrangement& arrangement, std::ostream* out) {
    *out << arrangement.scales;
}

class OnTwoDisplays : public testing::TestWithParam<Arrangement> {
protected:
    Session session{Desktop::Options{.monitors = GetParam().monitors},
                    Glimmerly::Options{.environment = {{"QT_SCREEN_SCALE_FACTORS", GetParam().scales}}}};
    Bitmap screen = session.desktop.client().pixels();
};

TEST_P(OnTwoDisplays, EachIsCapturedAlone) {
    for (const auto& area : GetParam().monitors) {
        SCOPED_TRACE(testing::Message() << "display at " << area.x << ", " << area.y);
        session.display = area;
        const auto at = [&area](int x, int y) { return Pixel{area.x + x, area.y + y}; };

        session.robot.moveTo(at(area.width / 2, area.height / 2));
        EXPECT_TRUE(samePixels(session.copySelection(at(40, 30), at(301, 207)),
                               screen.view({area.x + 40, area.y + 30, 261, 177})));
        EXPECT_TRUE(samePixels(session.copySelection(at(0, 0), at(area.width - 1, area.height - 1)),
                               screen.view(area)));
    }
}

TEST_P(OnTwoDisplays, TheOtherIsLeftAlone) {
    const auto mine = GetParam().monitors[1];
    const auto other = GetParam().monitors[0];
    session.display = mine;
    session.robot.moveTo({mine.x + 5, mine.y + 5});
    ASSERT_TRUE(session.openOverlay());
    session.robot.drag({mine.x + 50, mine.y + 50}, {mine.x + 150, mine.y + 150});
    // A strip where they touch belongs to the overlay, which is 2 points taller than its display.
    const PixelRect clear{other.x, other.y + 4, other.width, other.height - 8};
    EXPECT_TRUE(samePixels(session.desktop.client().pixels(clear), screen.view(clear)));
}

TEST_P(OnTwoDisplays, WhatWasSelectedIsStillThereWhenTheDisplayGoes) {
    const auto mine = GetParam().monitors[1];
    session.display = mine;
    session.robot.moveTo({mine.x + 5, mine.y + 5});
    ASSERT_TRUE(session.openOverlay());
    session.robot.drag({mine.x + 40, mine.y + 30}, {mine.x + 301, mine.y + 207});
    session.display = {0, 0, 900, 700};
    session.desktop.arrange({session.display});
    EXPECT_TRUE(session.waitForOverlay());
    session.robot.moveTo({450, 350});
    session.robot.type({Key::returnKey});
    EXPECT_TRUE(session.waitForNoOverlay());
    EXPECT_TRUE(samePixels(session.clipboard.picture(), screen.view({mine.x + 40, mine.y + 30, 261, 177})));
}

INSTANTIATE_TEST_SUITE_P(
    Arrangements, OnTwoDisplays,
    testing::Values(
        Arrangement{"SideBySide", {{0, 0, 1280, 800}, {1280, 0, 1000, 700}}, "DUMMY0=1;DUMMY1=1.5"},
        Arrangement{"OtherOnTheLeft", {{1000, 0, 1280, 800}, {0, 0, 1000, 700}}, "DUMMY0=1;DUMMY1=2"},
        Arrangement{"OneAboveTheOther", {{0, 0, 1200, 600}, {0, 600, 1200, 750}}, "DUMMY0=1.25;DUMMY1=1"},
        Arrangement{"OtherAbove", {{0, 700, 1280, 800}, {100, 0, 1000, 700}}, "DUMMY0=2;DUMMY1=1.25"}),
    [](const auto& test) { return test.param.name; });

} // namespace
} // namespace glimmerly::e2e

#include "capture/service/TargetScreen.h"

#include "tests/support/FakeScreens.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

Screen named(std::string name, Rect frame) {
    Screen screen;
    screen.name = std::move(name);
    screen.frame = frame;
    return screen;
}

TEST(TargetScreen, IsTheOneUnderTheMouseElseTheMainElseTheFirst) {
    FakeScreens screens(
        {named("left", {0, 0, 100, 50}), named("right", {100, 0, 80, 80}), named("above", {0, 60, 100, 40})});
    screens.main = screens.all[1];
    const struct {
        Point mouse;
        std::string expected;
    } cases[] = {
        {{0, 0}, "left"},    {{99.5, 49.5}, "left"}, {{100, 10}, "right"}, // the shared edge: where it starts
        {{50, 60}, "above"}, {{50, 55}, "right"},                          // a gap: the main screen
        {{-1, 10}, "right"}, {{180, 10}, "right"},
    };
    for (const auto& [mouse, expected] : cases) {
        screens.mouse = mouse;
        EXPECT_EQ(targetScreen(screens)->name, expected) << mouse.x << ", " << mouse.y;
    }
    screens.main.reset();
    screens.mouse = {500, 500};
    EXPECT_EQ(targetScreen(screens)->name, "left");
    screens.all.clear();
    EXPECT_FALSE(targetScreen(screens));
}

} // namespace
} // namespace glimmerly

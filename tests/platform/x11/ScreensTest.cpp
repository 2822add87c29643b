#include "platform/x11/X11Screens.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/desktop/XcbClient.h"

#include <QScreen>
#include <gtest/gtest.h>

#include <set>

namespace glimmerly {
namespace {

/// What everyone who uses screens relies on.
void expectContract(const Screens& screens) {
    const auto all = screens.screens();
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.front().frame.minY(), 0);
    std::set<std::uint32_t> displayIDs;
    for (const Screen& screen : all) {
        SCOPED_TRACE(screen.name);
        EXPECT_GT(screen.backingScale, 0);
        EXPECT_NEAR(screen.frame.width * screen.backingScale, screen.nativeFrame.width, 1e-6);
        EXPECT_NEAR(screen.frame.height * screen.backingScale, screen.nativeFrame.height, 1e-6);
        ASSERT_TRUE(screen.displayID);
        EXPECT_TRUE(displayIDs.insert(*screen.displayID).second);
    }
    const auto main = screens.mainScreen();
    ASSERT_TRUE(main);
    EXPECT_EQ(std::ranges::count(all, *main), 1);
    const Point mouse = screens.mouseLocation();
    EXPECT_EQ(std::ranges::count_if(all, [&](const Screen& screen) { return screen.frame.contains(mouse); }),
              1);
    EXPECT_EQ(screens.screens(), all) << "the same displays keep their numbers";
}

TEST(Screens, X11KeepsTheContractAndKnowsTheDisplay) {
    for (const char* scale : {"1", "1.25", "1.75", "2"}) {
        const X11Desktop desktop({.scale = scale, .screen = "1001x701x24"});
        const X11Screens screens(X11Connection::open().value());
        expectContract(screens);
        const auto all = screens.screens();
        ASSERT_EQ(all.size(), 1U);
        EXPECT_EQ(all[0].name, QGuiApplication::primaryScreen()->name().toStdString());
        EXPECT_EQ(all[0].nativeFrame, (PixelRect{0, 0, 1001, 701}));
        EXPECT_EQ(all[0].backingScale, std::stod(scale));
        EXPECT_EQ(all[0].frame, (Rect{0, 0, 1001 / std::stod(scale), 701 / std::stod(scale)}));
    }
}

TEST(Screens, TheFakeKeepsTheContract) {
    auto beside = FakeScreens::display({1920, 1080}, 1.5, 2);
    beside.frame.x = 800;
    expectContract(FakeScreens({FakeScreens::display({800, 600}), beside}));
}

TEST(Screens, X11WithoutRandRIsOneDisplay) {
    const X11Desktop desktop({.screen = "640x480x24", .serverOptions = {"-extension", "RANDR"}});
    const X11Screens screens(X11Connection::open().value());
    expectContract(screens);
    EXPECT_EQ(screens.screens().at(0).nativeFrame, (PixelRect{0, 0, 640, 480}));
}

TEST(Screens, X11PointerIsOnItsPixelToTheScreensEdges) {
    for (const double scale : {1.0, 1.5, 1.1}) {
        const X11Desktop desktop({.scale = std::to_string(scale).c_str(), .screen = "1001x701x24"});
        const X11Screens screens(X11Connection::open().value());
        const Rect frame = screens.screens().at(0).frame;
        XcbClient client;
        for (const PixelRect at : {PixelRect{0, 0, 1, 1}, {1000, 700}, {0, 700}, {1000, 0}, {333, 101}}) {
            client.robot.moveTo({at.x, at.y});
            const Point mouse = screens.mouseLocation();
            EXPECT_TRUE(frame.contains(mouse)) << at.x << ", " << at.y;
            EXPECT_NEAR(mouse.x * scale, at.x, 1e-9);
            EXPECT_NEAR(mouse.y * scale, 700 - at.y, 1e-9);
        }
    }
}

TEST(Screens, X11SurvivesTheServersEnd) {
    X11Desktop desktop;
    const X11Screens screens(X11Connection::open().value());
    desktop.application.reset();
    desktop.server.kill();
    EXPECT_TRUE(screens.screens().empty());
    EXPECT_FALSE(screens.mainScreen());
    EXPECT_NE(screens.mouseLocation().x, screens.mouseLocation().x);
}

} // namespace
} // namespace glimmerly

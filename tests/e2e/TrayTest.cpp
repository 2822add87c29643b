// The tray icon and its menu.
#include "tests/e2e/support/Tray.h"

namespace glimmerly::e2e {
namespace {

TEST(Tray, TakeScreenshotShowsTheScreenWithoutTheMenu) {
    Session session({.panel = Panel::tint2});
    const auto& client = session.desktop.client();
    const auto upper = abovePanel(client);
    const auto before = client.pixels(upper);
    chooseFromTray(session, {Key::down});

    ASSERT_TRUE(session.waitForOverlay());
    session.robot.drag({0, 0}, {upper.width - 1, upper.height});
    session.robot.type({Key::returnKey});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_TRUE(samePixels(session.clipboard.picture(), before));
    EXPECT_TRUE(session.program.log("Registered global screenshot hotkey pressed").empty());
}

TEST(Tray, QuitEndsTheProgram) {
    Session session({.panel = Panel::tint2});
    chooseFromTray(session, {Key::up});
    EXPECT_EQ(session.program.process().waitForExit(patience), 0);
    EXPECT_EQ(session.program.log("Quit chosen from menu").size(), 1U);
    EXPECT_EQ(session.program.log().back().value("message", ""), "applicationWillTerminate");
}

} // namespace
} // namespace glimmerly::e2e

// The tray icon and its menu.
#include "tests/e2e/support/Tray.h"

#include "tests/e2e/support/Session.h"

namespace glimmerly::e2e {
namespace {

Desktop::Options withPanel() {
    return {.panel = Panel::tint2};
}

/// The screen but the panel.
PixelRect abovePanel(const XClient& client) {
    return {0, 0, client.size().width, client.size().height - 40};
}

/// Waits for the icon, clicks it, and waits until the menu is on the screen.
void openMenu(const Session& session) {
    const auto& client = session.desktop.client();
    ASSERT_TRUE(waitUntil([&] { return trayIconPlace(client).has_value(); })) << "no icon in the panel";
    const auto before = client.pixels(abovePanel(client));
    session.robot.click(*trayIconPlace(client), 3);
    ASSERT_TRUE(waitUntil([&] { return client.pixels(abovePanel(client)) != before; })) << "no menu";
}

TEST(Tray, TakeScreenshotShowsTheScreenWithoutTheMenu) {
    Session session(withPanel());
    const auto& client = session.desktop.client();
    const auto upper = abovePanel(client);
    const auto before = client.pixels(upper);
    openMenu(session);
    session.robot.type({Key::down});
    session.robot.type({Key::returnKey});

    ASSERT_TRUE(session.waitForOverlay());
    session.robot.drag({0, 0}, {upper.width - 1, upper.height});
    session.robot.type({Key::returnKey});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_TRUE(samePixels(session.clipboard.picture(), before));
    EXPECT_TRUE(session.program.log("Registered global screenshot hotkey pressed").empty());
}

TEST(Tray, QuitEndsTheProgram) {
    Session session(withPanel());
    openMenu(session);
    session.robot.type({Key::up});
    session.robot.type({Key::returnKey});
    EXPECT_EQ(session.program.process().waitForExit(patience), 0);
    EXPECT_EQ(session.program.log("Quit chosen from menu").size(), 1U);
    EXPECT_EQ(session.program.log().back().value("message", ""), "applicationWillTerminate");
}

} // namespace
} // namespace glimmerly::e2e

// The tray icon and its menu.
#include "tests/e2e/support/Session.h"

#include <csignal>

namespace glimmerly::e2e {
namespace {

Desktop::Options withPanel() {
    return {.panel = Panel::tint2};
}

/// Where the program's icon is in the panel; none while it is not there.
std::optional<Pixel> iconPlace(const XClient& client) {
    for (const auto window : client.windowsWith("_XEMBED_INFO")) {
        const auto area = client.areaOf(window);
        if (area.width > 4 && area.x > 0 && area.y > 0)
            return Pixel{area.x + area.width / 2, area.y + area.height / 2};
    }
    return std::nullopt;
}

TEST(Tray, TakeScreenshotShowsTheScreenWithoutTheMenu) {
    Session session(withPanel());
    const auto& client = session.desktop.client();
    ASSERT_TRUE(waitUntil([&] { return iconPlace(client).has_value(); })) << "no icon in the panel";
    const auto windows = client.visibleWindows().size();
    const auto upper = PixelRect{0, 0, client.size().width, client.size().height - 40};
    const auto before = client.pixels(upper);

    session.robot.click(*iconPlace(client), 3);
    ASSERT_TRUE(waitUntil([&] { return client.visibleWindows().size() > windows; })) << "no menu";
    const auto menuShown = [&] { return client.pixels(upper) != before; };
    ASSERT_TRUE(waitUntil(menuShown));
    session.robot.type({Key::down});
    session.robot.type({Key::returnKey});

    ASSERT_TRUE(session.waitForOverlay());
    session.robot.drag({0, 0}, {upper.width - 1, upper.height});
    session.robot.type({Key::returnKey});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_TRUE(samePixels(session.clipboard.picture(), before));
    EXPECT_TRUE(session.program.log("Registered global screenshot hotkey pressed").empty());
}

TEST(Tray, TheIconComesToATrayThatStartsLaterAndAgainWhenItRestarts) {
    Session session;
    const auto& client = session.desktop.client();
    EXPECT_FALSE(iconPlace(client));
    for (int start = 0; start < 2; ++start) {
        auto& panel = session.desktop.startPanel();
        EXPECT_TRUE(waitUntil([&] { return iconPlace(client).has_value(); })) << "start " << start;
        panel.sendSignal(SIGTERM);
        ASSERT_TRUE(panel.waitForExit(patience));
        ASSERT_TRUE(waitUntil([&] { return !iconPlace(client); }));
    }
    EXPECT_TRUE(session.openOverlay());
}

} // namespace
} // namespace glimmerly::e2e

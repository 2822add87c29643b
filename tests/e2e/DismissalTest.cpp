// What an overlay that is dismissed leaves behind: nothing.
#include "tests/e2e/support/Session.h"

namespace glimmerly::e2e {
namespace {

TEST(Dismissal, EscapeLeavesNoTrace) {
    Session session;
    const auto& client = session.desktop.client();
    session.clipboard.setText(session.desktop, "kept");
    session.desktop.start({"xterm", "-geometry", "60x20+100+100"});
    const auto active = [&] {
        return client.windowProperty(client.root(), "_NET_ACTIVE_WINDOW").value_or(XCB_NONE);
    };
    ASSERT_TRUE(waitUntil([&] { return active() != XCB_NONE; }));
    const auto window = active();
    const auto focus = client.focusedWindow();

    ASSERT_TRUE(session.openOverlay());
    ASSERT_EQ(session.program.captureFiles().size(), 1U);
    session.robot.drag({50, 50}, {400, 300});
    session.robot.type({Key::escape});
    ASSERT_TRUE(session.waitForNoOverlay());

    EXPECT_TRUE(waitUntil([&] { return active() == window && client.focusedWindow() == focus; }))
        << "active " << active() << ", was " << window << "; focus " << client.focusedWindow() << ", was "
        << focus;
    EXPECT_TRUE(waitUntil([&] { return session.program.captureFiles().empty(); }));
    EXPECT_EQ(session.clipboard.text(), "kept");
}

} // namespace
} // namespace glimmerly::e2e

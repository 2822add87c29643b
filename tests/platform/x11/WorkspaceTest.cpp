#include "platform/x11/X11Workspace.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/support/desktop/XcbClient.h"

#include <gmock/gmock.h>

#include <unistd.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;

class X11WorkspaceTest : public testing::TestWithParam<WindowManager> {
protected:
    [[nodiscard]] bool hasManager() const { return GetParam() != WindowManager::none; }

    /// A window on the screen, in front and with the keyboard.
    xcb_window_t work(const XcbClient::WindowOptions& options) {
        const auto window = client.open(options);
        client.raise(window);
        EXPECT_TRUE(runUntil([&] { return client.focus(window) == window; }));
        EXPECT_TRUE(runUntil([&] { return isActive(window) && order().back() == window; }));
        return window;
    }
    [[nodiscard]] bool isActive(xcb_window_t window) const {
        return client.focusedWindow() == window &&
               (!hasManager() || client.managedWindows("_NET_ACTIVE_WINDOW") == std::vector{window});
    }
    /// The client's windows from bottom to top.
    [[nodiscard]] std::vector<xcb_window_t> order() const {
        auto windows =
            hasManager() ? client.managedWindows("_NET_CLIENT_LIST_STACKING") : client.visibleWindows();
        std::erase_if(windows, [&](xcb_window_t window) { return !client.hasMade(window); });
        return windows;
    }

    X11Desktop desktop{{.windowManager = GetParam()}};
    XcbClient client;
    X11Workspace workspace{X11Connection::open().value(), "app.glimmerly.Glimmerly"};
};

TEST_P(X11WorkspaceTest, NamesWhatIsInFront) {
    client.focus(XCB_INPUT_FOCUS_POINTER_ROOT);
    EXPECT_EQ(workspace.frontmostApplication(), nullptr);

    const auto window = work({.applicationClass = "Editor"});
    ASSERT_NE(workspace.frontmostApplication(), nullptr);
    EXPECT_EQ(workspace.frontmostApplication()->bundleIdentifier(), "Editor");
    client.setText(window, "_GTK_APPLICATION_ID", "org.example.Editor");
    EXPECT_EQ(workspace.frontmostApplication()->bundleIdentifier(), "org.example.Editor");

    work({.process = static_cast<std::uint32_t>(::getpid()), .applicationClass = "glimmerly"});
    EXPECT_EQ(workspace.frontmostApplication()->bundleIdentifier(), "app.glimmerly.Glimmerly");

    const auto nameless = work({});
    for (const char* property : {"WM_CLASS", "_NET_WM_PID"})
        client.setText(nameless, property, "");
    EXPECT_EQ(workspace.frontmostApplication()->bundleIdentifier(), std::nullopt);
}

TEST_P(X11WorkspaceTest, GivesOnlyTheKeyboardBackWhileNothingHasMoved) {
    const auto behind = work({.process = 1});
    const auto between = work({.process = 2});
    const auto active = work({.process = 1});
    const auto application = workspace.frontmostApplication();

    client.focus(XCB_INPUT_FOCUS_POINTER_ROOT);
    application->activateAllWindows();
    EXPECT_TRUE(runUntil([&] { return isActive(active); }));
    EXPECT_THAT(order(), ElementsAre(behind, between, active));
}

TEST_P(X11WorkspaceTest, BringsAllItsWindowsForwardWhenAnotherCameInFront) {
    const auto behind = work({.process = 1});
    const auto active = work({.process = 1});
    const auto application = workspace.frontmostApplication();
    const auto later = work({.process = 2});

    application->activateAllWindows();
    EXPECT_TRUE(runUntil([&] { return isActive(active); }));
    EXPECT_THAT(order(), ElementsAre(later, behind, active));
}

TEST_P(X11WorkspaceTest, BringsBackAWindowThatWasPutAway) {
    if (!hasManager())
        GTEST_SKIP() << "nobody puts windows away";
    const auto active = work({});
    const auto application = workspace.frontmostApplication();
    client.iconify(active);
    ASSERT_TRUE(runUntil([&] { return !isActive(active); }));
    application->activateAllWindows();
    EXPECT_TRUE(runUntil([&] { return isActive(active); }));
}

TEST_P(X11WorkspaceTest, DoesNothingOnceItHasGone) {
    const auto other = work({.process = 2});
    const auto gone = work({.process = 1});
    const auto application = workspace.frontmostApplication();
    client.close(gone);
    ASSERT_TRUE(runUntil([&] { return client.focus(other) == other && isActive(other); }));
    application->activateAllWindows();
    EXPECT_EQ(workspace.frontmostApplication()->bundleIdentifier(), "Example") << "the server still answers";
    EXPECT_TRUE(isActive(other));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, X11WorkspaceTest,
                         testing::Values(WindowManager::none, WindowManager::openbox), nameOfWindowManager);

} // namespace
} // namespace glimmerly

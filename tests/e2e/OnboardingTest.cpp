// The first launch on a desktop that withholds the permission, and one that changes between light and dark.
#include "tests/e2e/support/Session.h"
#include "tests/support/ScratchDirectory.h"

#include <algorithm>
#include <csignal>

namespace glimmerly::e2e {
namespace {

constexpr Bitmap::Pixel lightBackground = 0xfff2f2f4;
constexpr Bitmap::Pixel darkBackground = 0xff232326;
constexpr Bitmap::Pixel green = 0xff1f803f;
const std::string completed = "hasCompletedPermissionsOnboarding=";

/// A Wayland session's portal and permission store, and the X server that our program runs on there.
struct Onboarding : testing::Test {
    Onboarding() { desktop.startPortal("screenshot=no\ncolor-scheme=0\n"); }
    ~Onboarding() override {
        for (const pid_t process : programs())
            ::kill(process, SIGKILL);
    }

    /// The onboarding window, once it is the only one and has the keyboard.
    [[nodiscard]] std::optional<xcb_window_t> window() const {
        const auto& client = desktop.client();
        const auto windows = client.managedWindows();
        const bool hasKeyboard =
            windows.size() == 1 && client.windowProperty(client.root(), "_NET_ACTIVE_WINDOW") == windows[0];
        return hasKeyboard ? std::optional(windows[0]) : std::nullopt;
    }
    [[nodiscard]] bool waitForWindow() const {
        return waitUntil([this] { return window().has_value(); });
    }
    [[nodiscard]] Bitmap windowPixels() const {
        return desktop.client().pixels(desktop.client().areaOf(*window()));
    }
    [[nodiscard]] bool windowShows(Bitmap::Pixel color) const {
        return shows(desktop.client().areaOf(*window()), color);
    }
    [[nodiscard]] bool shows(PixelRect area, Bitmap::Pixel color) const {
        const Bitmap picture = desktop.client().pixels(area);
        for (int y = 0; y < picture.size().height; ++y) {
            const auto row = picture.row(y);
            if (std::ranges::find(row, color) != row.end())
                return true;
        }
        return false;
    }

    [[nodiscard]] std::vector<pid_t> programs() const {
        return desktop.processesOf(Glimmerly::executable().string());
    }

    const Glimmerly::Options inWaylandSession{.environment = {{"XDG_SESSION_TYPE", "wayland"}}};
    Desktop desktop;
    Robot robot{desktop.client()};
};

TEST_F(Onboarding, StaysUntilThePermissionIsGrantedAndContinueChosen) {
    Glimmerly program(desktop, inWaylandSession);
    ASSERT_TRUE(waitForWindow());
    ASSERT_TRUE(
        waitUntil([&] { return contentOf(program.preferencesFile()).contains(completed + "false"); }));
    const Bitmap before = windowPixels();

    robot.type({Key::returnKey});
    ASSERT_TRUE(waitUntil([&] { return windowPixels() != before; })) << "no explanation";
    const Bitmap explained = windowPixels();
    robot.type({Key::returnKey});
    robot.type({Key::tab}); // shows where the focus is, once Return has done nothing
    ASSERT_TRUE(waitUntil([&] { return windowPixels() != explained; }));
    EXPECT_FALSE(windowShows(green));

    desktop.portalSays("screenshot=yes\n");
    ASSERT_TRUE(waitUntil([&] { return windowShows(green); }));
    EXPECT_TRUE(contentOf(program.preferencesFile()).contains(completed + "false"));
    robot.type({Key::keypadEnter});
    ASSERT_TRUE(waitUntil([&] { return desktop.client().managedWindows().empty(); }));
    EXPECT_TRUE(contentOf(program.preferencesFile()).contains(completed + "true"));
    robot.pressHotkey();
    EXPECT_TRUE(waitUntil([&] { return program.overlays().size() == 1; }));
}

TEST_F(Onboarding, ContinueKeepsItsWindowInFrontOfTheSettings) {
    Glimmerly program(desktop, inWaylandSession);
    ASSERT_TRUE(waitForWindow());
    const xcb_window_t onboarding = *window();
    ChildProcess again({.command = {Glimmerly::executable()}, .environment = desktop.environment()});
    ASSERT_EQ(again.waitForExit(patience), 0);
    const auto stacking = [this] { return desktop.client().managedWindows("_NET_CLIENT_LIST_STACKING"); };
    ASSERT_TRUE(waitUntil([&] { return stacking().size() == 2 && stacking().back() != onboarding; }));
    // Once the settings are painted, beside the onboarding, they have asked to come forward too.
    const auto settings = desktop.client().areaOf(stacking().back());
    const PixelRect rightEdge{settings.maxX() - 10, settings.y, 10, settings.height};
    ASSERT_TRUE(waitUntil([&] { return shows(rightEdge, lightBackground); }));
    const auto area = desktop.client().areaOf(onboarding);
    const auto isInFront = [&] {
        return stacking().back() == onboarding && desktop.client().focusedWindow() == onboarding;
    };
    robot.click({area.x + area.width / 2, area.maxY() - 3}); // below the settings
    ASSERT_TRUE(waitUntil(isInFront));
    const Bitmap before = desktop.client().pixels(area);
    robot.type({Key::returnKey});
    ASSERT_TRUE(waitUntil([&] { return desktop.client().pixels(area) != before; })) << "no explanation";
    robot.type({Key::escape}); // which reaches the one in front
    EXPECT_TRUE(program.waitForLog("applicationDidFinishLaunching", 2));
}

TEST_F(Onboarding, EscapeReopensTheProgramAndNoOtherStartComesBetween) {
    Glimmerly program(desktop, inWaylandSession);
    ASSERT_TRUE(waitForWindow());
    const pid_t first = program.process().pid();
    robot.type({Key::escape});
    ASSERT_TRUE(waitUntil([&] { return programs().size() == 2; }));
    std::vector<std::unique_ptr<ChildProcess>> starts;
    for (int i = 0; i < 6; ++i) {
        starts.push_back(std::make_unique<ChildProcess>(ChildProcess::Options{
            .command = {Glimmerly::executable()}, .environment = desktop.environment()}));
    }
    EXPECT_EQ(program.process().waitForExit(patience), 0);
    for (const auto& start : starts)
        EXPECT_EQ(start->waitForExit(patience), 0) << "handed over, to the one or the other";

    ASSERT_TRUE(program.waitForLog("applicationDidFinishLaunching", 2));
    ASSERT_TRUE(waitUntil([&] { return program.isHotkeyHeld(); }));
    const auto running = programs();
    ASSERT_EQ(running.size(), 1U);
    EXPECT_NE(running.front(), first);
    EXPECT_EQ(program.log("applicationDidFinishLaunching").size(), 2U);
    EXPECT_TRUE(program.log("RegisterEventHotKey failed").empty()) << "the hotkey was free by then";
    ::kill(running.front(), SIGTERM);
    EXPECT_TRUE(program.waitForLog("applicationWillTerminate", 2));
    EXPECT_TRUE(waitUntil([&] { return programs().empty(); }));
}

TEST_F(Onboarding, AnOpenWindowFollowsLightAndDark) {
    desktop.portalSays("screenshot=no\ncolor-scheme=1\n");
    const Glimmerly program(desktop, inWaylandSession);
    ASSERT_TRUE(waitForWindow());
    EXPECT_TRUE(waitUntil([&] { return windowPixels().row(5)[5] == darkBackground; }));
    desktop.portalSays("screenshot=no\ncolor-scheme=2\n");
    EXPECT_TRUE(waitUntil([&] { return windowPixels().row(5)[5] == lightBackground; }));
    desktop.portalSays("screenshot=no\ncolor-scheme=1\n");
    EXPECT_TRUE(waitUntil([&] { return windowPixels().row(5)[5] == darkBackground; }));
}

} // namespace
} // namespace glimmerly::e2e

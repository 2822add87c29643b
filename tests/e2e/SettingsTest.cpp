// The settings window, and recording another hotkey in it.
#include "tests/e2e/support/Session.h"
#include "tests/support/ScratchDirectory.h"

#include <cstring>

namespace glimmerly::e2e {
namespace {

// In the window's content, points from its top left corner.
constexpr Pixel recordedHotkey{597, 136};
constexpr Pixel clearButton{664, 136};
constexpr Pixel menuButton{50, 580};

struct Settings : testing::Test {
    /// Starts the program a second time, and waits until that has shown the window with the keyboard.
    void open() {
        ChildProcess again(
            {.command = {Glimmerly::executable()}, .environment = session.desktop.environment()});
        ASSERT_EQ(again.waitForExit(patience), 0);
        ASSERT_TRUE(waitUntil([this] {
            const auto windows = client.managedWindows();
            return windows.size() == 1 &&
                   client.windowProperty(client.root(), "_NET_ACTIVE_WINDOW") == windows.front();
        }));
    }
    void close() const {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = client.managedWindows().front();
        message.type = client.atom("_NET_CLOSE_WINDOW");
        char event[32] = {};
        std::memcpy(event, &message, sizeof(message));
        xcb_send_event(client.get(), 0, client.root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, event);
        client.sync();
    }
    void click(Pixel place) const {
        const auto area = client.areaOf(client.managedWindows().front());
        session.robot.click({area.x + place.x, area.y + place.y});
    }
    /// Clicks where a recording starts, and waits until it has the keyboard and has suspended the hotkey.
    [[nodiscard]] bool startRecording(Pixel place) const {
        click(place);
        return waitUntil(
            [this] { return !session.robot.isKeyboardFree() && !session.program.isHotkeyHeld(); });
    }
    [[nodiscard]] bool waitForDefaultHotkey() const {
        return waitUntil([this] { return session.program.isHotkeyHeld(); });
    }
    [[nodiscard]] bool waitForStored(const std::string& bytes) const {
        return waitUntil([&] { return stored() == bytes; });
    }
    /// The line of the preferences that holds the hotkey; empty when there is none.
    [[nodiscard]] std::string stored() const {
        const std::string text = contentOf(session.program.preferencesFile());
        const auto start = text.find("screenshotGlobalHotkey=");
        return start == std::string::npos ? "" : text.substr(start, text.find('\n', start) - start);
    }
    /// Opens the menu that the window offers where there is no tray; none when it does not come.
    [[nodiscard]] std::optional<PixelRect> openMenu() const {
        const std::size_t before = client.visibleWindows().size();
        click(menuButton);
        if (!waitUntil([&] { return client.visibleWindows().size() == before + 1; }))
            return std::nullopt;
        return client.areaOf(client.visibleWindows().back());
    }
    [[nodiscard]] std::optional<Bitmap> menu() const {
        const std::size_t before = client.visibleWindows().size();
        const auto picture = openMenu().transform([this](PixelRect area) { return client.pixels(area); });
        session.robot.type({Key::escape});
        return waitUntil([&] { return client.visibleWindows().size() == before; }) ? picture : std::nullopt;
    }

    static constexpr auto defaultBytes = "screenshotGlobalHotkey=\"@ByteArray([0,12])\"";
    const std::vector<Key> defaultHotkey{Key::super, Key::leftShift, Key::a};
    const std::vector<Key> otherHotkey{Key::leftControl, Key::super, Key::space};
    Session session;
    const XClient& client = session.desktop.client();
};

TEST_F(Settings, AnotherHotkeyIsRecordedUsedClearedAndReplaced) {
    open();
    const auto before = menu();
    ASSERT_TRUE(startRecording(recordedHotkey));
    session.robot.type({Key::a});
    session.robot.type({Key::leftShift});
    session.robot.type({Key::leftShift, Key::a});
    session.robot.type(otherHotkey);
    ASSERT_TRUE(waitForStored("screenshotGlobalHotkey=\"@ByteArray([49,9])\"")) << stored();
    EXPECT_NE(menu(), before) << "it stands beside the item";
    session.robot.waitForKeyboard();
    session.robot.type(otherHotkey);
    ASSERT_TRUE(session.waitForOverlay());
    session.robot.type({Key::escape});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_FALSE(session.program.isHotkeyHeld()) << "the one before is free for others";

    session.robot.waitForKeyboard();
    click(clearButton);
    ASSERT_TRUE(waitForStored(""));
    ASSERT_TRUE(startRecording(clearButton)) << "now that there is nothing to clear";
    const std::size_t screenshots = session.program.log("Registered global screenshot hotkey pressed").size();
    session.robot.type(defaultHotkey);
    ASSERT_TRUE(waitForStored(defaultBytes));
    ASSERT_TRUE(waitForDefaultHotkey());

    // The hotkey itself, pressed while recording, is recorded again.
    ASSERT_TRUE(startRecording(recordedHotkey));
    session.robot.type(defaultHotkey);
    ASSERT_TRUE(waitForDefaultHotkey());
    EXPECT_EQ(stored(), defaultBytes);
    EXPECT_EQ(session.program.log("Registered global screenshot hotkey pressed").size(), screenshots);
    EXPECT_TRUE(session.program.overlays().empty());
}

TEST_F(Settings, AnOverlayOverTheWindowHasTheKeyboard) {
    open();
    for (int screenshot = 0; screenshot < 5; ++screenshot) {
        ASSERT_TRUE(session.openOverlay()) << "the window is " << client.managedWindows().front();
        session.robot.type({Key::escape});
        ASSERT_TRUE(session.waitForNoOverlay());
    }
}

TEST_F(Settings, AnOverlayLeavesTheWindowBehindOthers) {
    open();
    session.desktop.start({"xterm", "-geometry", "60x20+100+100"});
    const auto stacking = [this] { return client.managedWindows("_NET_CLIENT_LIST_STACKING"); };
    const auto terminalIsActive = [&] {
        const auto windows = stacking();
        return windows.size() == 2 && windows.back() != client.managedWindows().front() &&
               client.windowProperty(client.root(), "_NET_ACTIVE_WINDOW") == windows.back();
    };
    ASSERT_TRUE(waitUntil(terminalIsActive));
    const auto before = stacking();
    ASSERT_TRUE(session.openOverlay());
    EXPECT_EQ(stacking(), before);
    session.robot.type({Key::escape});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_TRUE(waitUntil(terminalIsActive));
    EXPECT_EQ(stacking(), before);
}

TEST_F(Settings, AnOverlayEndsARecordingAndGetsTheKeys) {
    open();
    ASSERT_TRUE(startRecording(recordedHotkey));
    const auto menu = openMenu();
    ASSERT_TRUE(menu);
    session.robot.click({menu->x + menu->width / 2, menu->y + menu->height * 3 / 10}); // "Take screenshot"
    ASSERT_TRUE(session.waitForOverlay());
    EXPECT_TRUE(waitForDefaultHotkey());
    session.robot.type({Key::escape});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_EQ(stored(), defaultBytes);
}

TEST_F(Settings, EscapeAndClosingTheWindowGiveTheHotkeyBack) {
    open();
    ASSERT_TRUE(startRecording(recordedHotkey));
    session.robot.type({Key::escape});
    ASSERT_TRUE(waitForDefaultHotkey());
    EXPECT_EQ(client.managedWindows().size(), 1U);

    const auto place = client.areaOf(client.managedWindows().front());
    ASSERT_TRUE(startRecording(recordedHotkey));
    close();
    ASSERT_TRUE(waitForDefaultHotkey());
    EXPECT_TRUE(waitUntil([this] { return client.managedWindows().empty(); }));
    EXPECT_EQ(stored(), defaultBytes);
    session.robot.pressHotkey();
    ASSERT_TRUE(session.waitForOverlay());
    session.robot.type({Key::escape});
    ASSERT_TRUE(session.waitForNoOverlay());
    open();
    EXPECT_TRUE(waitUntil([&] { return client.areaOf(client.managedWindows().front()) == place; }))
        << "where it was";
}

TEST_F(Settings, AShortcutOfTheWindowManagerIsRefusedWithAnAlert) {
    open();
    ASSERT_TRUE(startRecording(recordedHotkey));
    constexpr auto d = static_cast<Key>(40); // with Super, shows the desktop
    session.robot.type({Key::super, d});
    ASSERT_TRUE(session.program.waitForLog("Rejected system-reserved shortcut"));
    const auto line = session.program.log("Rejected system-reserved shortcut").front();
    EXPECT_EQ(line["metadata"].value("key", ""), "2");
    EXPECT_EQ(line["metadata"].value("modifiers_enc", ""), "8");
    ASSERT_TRUE(waitUntil([this] { return client.managedWindows().size() == 2; })) << "no alert";
    EXPECT_FALSE(session.program.isHotkeyHeld()) << "recording goes on";
    session.robot.type({Key::escape});
    ASSERT_TRUE(waitForDefaultHotkey());
    session.robot.type({Key::returnKey});
    EXPECT_TRUE(waitUntil([this] { return client.managedWindows().size() == 1; }));
    EXPECT_EQ(stored(), defaultBytes);

    ASSERT_TRUE(startRecording(recordedHotkey));
    session.robot.type({Key::super, d});
    ASSERT_TRUE(waitUntil([this] { return client.managedWindows().size() == 2; })) << "no alert";
    close();
    EXPECT_TRUE(waitUntil([this] { return client.managedWindows().empty(); })) << "the alert goes too";
    EXPECT_TRUE(waitForDefaultHotkey());
}

} // namespace
} // namespace glimmerly::e2e

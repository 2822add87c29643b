// The hotkey works whatever the keyboard's state, and every press counts once.
#include "tests/e2e/support/Session.h"
#include "tests/support/NoisePicture.h"

namespace glimmerly::e2e {
namespace {

constexpr const char* pressed = "Registered global screenshot hotkey pressed";

void expectACopy(Session& session) {
    const auto screen = session.desktop.client().pixels();
    EXPECT_TRUE(samePixels(session.copySelection({100, 80}, {400, 300}), screen.view({100, 80, 300, 220})));
}

TEST(HotkeyPress, WorksWithoutAWindowManager) {
    Session session(Desktop::Options{.windowManager = WindowManager::none});
    expectACopy(session);
}

TEST(HotkeyPress, IsAPlaceOnTheKeyboardWhateverTheLayoutAndTheLocks) {
    Session session(Desktop::Options{.keyboardLayout = {"ru"}});
    for (const Key lock : {Key::capsLock, Key::numLock})
        session.robot.type({lock});
    expectACopy(session);
    ASSERT_TRUE(session.desktop.outputOf({"setxkbmap", "fr"}));
    ASSERT_TRUE(waitUntil([&] { return session.program.isHotkeyHeld(); }));
    expectACopy(session);
}

TEST(HotkeyPress, HeldDownIsOneRequest) {
    Session session;
    session.robot.waitForKeyboard();
    for (const Key key : {Key::super, Key::leftShift, Key::a})
        session.robot.press(key);
    ASSERT_TRUE(session.waitForOverlay());
    // The server repeats a held key after 660 ms, 25 times a second: time enough for dozens.
    EXPECT_FALSE(waitUntil([&] { return session.program.log(pressed).size() > 1; }, std::chrono::seconds(2)));
    for (const Key key : {Key::a, Key::leftShift, Key::super})
        session.robot.release(key);
    EXPECT_TRUE(session.waitForOverlay());
    EXPECT_EQ(session.program.log(pressed).size(), 1U);

    session.robot.type({Key::escape});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_TRUE(session.openOverlay()) << "the next press counts again";
}

TEST(HotkeyPress, CountsWhileTheKeyThatClosedAnOverlayIsStillDown) {
    Session session;
    ASSERT_TRUE(session.openOverlay());
    session.robot.press(Key::escape);
    ASSERT_TRUE(session.waitForNoOverlay());
    session.robot.type({Key::super, Key::leftShift, Key::a});
    EXPECT_TRUE(session.waitForOverlay());
    session.robot.release(Key::escape);
    session.robot.drag({10, 10}, {500, 400});
    session.robot.type({Key::returnKey});
    EXPECT_TRUE(session.waitForNoOverlay());
}

TEST(HotkeyPress, TwentyInASecondLeaveOneOverlayAndItsFile) {
    Session session;
    session.robot.waitForKeyboard();
    session.robot.press(Key::super);
    session.robot.press(Key::leftShift);
    for (int press = 0; press < 20; ++press)
        session.robot.type({Key::a});
    session.robot.release(Key::leftShift);
    session.robot.release(Key::super);

    ASSERT_TRUE(session.program.waitForLog(pressed, 20));
    const auto settled = [&] {
        const auto& program = session.program;
        return program.log("Capture succeeded; presenting overlay").size() +
                   program.log("Capture finished but a newer screenshot was requested; discarded temp file")
                       .size() ==
               20;
    };
    ASSERT_TRUE(waitUntil(settled));
    ASSERT_TRUE(session.waitForOverlay());
    EXPECT_EQ(session.program.captureFiles().size(), 1U);

    session.robot.type({Key::escape});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_TRUE(waitUntil([&] { return session.program.captureFiles().empty(); }));
}

TEST(HotkeyPress, WhileAnOverlayIsOpenReplacesIt) {
    Session session;
    const auto& client = session.desktop.client();
    ASSERT_TRUE(session.openOverlay());
    const auto firstFiles = session.program.captureFiles();
    ASSERT_EQ(firstFiles.size(), 1U);

    const auto changed = noisePicture(client.size(), 3);
    client.setBackground(changed);
    session.robot.pressHotkey();
    ASSERT_TRUE(session.program.waitForLog("Screenshot overlay presenting", 2));
    ASSERT_TRUE(session.waitForOverlay());
    EXPECT_EQ(session.program.overlays().size(), 1U);
    ASSERT_EQ(session.program.captureFiles().size(), 1U);
    EXPECT_NE(session.program.captureFiles(), firstFiles);

    session.robot.drag({10, 10}, {500, 400});
    session.robot.type({Key::keypadEnter});
    ASSERT_TRUE(session.waitForNoOverlay());
    EXPECT_TRUE(samePixels(session.clipboard.picture(), changed.view({10, 10, 490, 390})));
}

} // namespace
} // namespace glimmerly::e2e

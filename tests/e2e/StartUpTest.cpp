// Starting under adverse conditions, and who may read what the program writes.
#include "tests/e2e/support/Session.h"
#include "tests/support/ScratchDirectory.h"

#include <sys/stat.h>

#include <csignal>

namespace glimmerly::e2e {
namespace {

TEST(StartUp, AHotkeyThatAnotherProgramHoldsIsLoggedAndNothingElseBreaks) {
    Desktop desktop;
    const auto& client = desktop.client();
    xcb_grab_key(client.get(), 0, client.root(), XCB_MOD_MASK_ANY, static_cast<xcb_keycode_t>(Key::a),
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    client.sync();
    Glimmerly program(desktop, {}, Glimmerly::Readiness::launched);
    ASSERT_TRUE(program.waitForLog("RegisterEventHotKey failed"));
    const auto lines = program.log("RegisterEventHotKey failed");
    EXPECT_EQ(lines.front()["metadata"].value("osstatus", ""), "-9878");
    EXPECT_EQ(lines.front().value("level", ""), "error");
    EXPECT_TRUE(program.process().isRunning());
    program.process().sendSignal(SIGTERM);
    EXPECT_EQ(program.process().waitForExit(patience), 0);
}

TEST(StartUp, AStoredHotkeyIsTheOneThatWorks) {
    Session session;
    const auto file = session.program.preferencesFile();
    ASSERT_TRUE(waitUntil([&] { return contentOf(file).contains("[0,12]"); }));
    session.program.process().sendSignal(SIGTERM);
    ASSERT_EQ(session.program.process().waitForExit(patience), 0);
    auto text = contentOf(file);
    text.replace(text.find("[0,12]"), 6, "[49,9]"); // Control, Command and Space
    writeContent(file, text);

    const Glimmerly again(session.desktop, {}, Glimmerly::Readiness::launched);
    ASSERT_TRUE(waitUntil([&] {
        session.robot.type({Key::leftControl, Key::super, Key::space});
        return again.overlays().size() == 1;
    }));
    EXPECT_FALSE(again.isHotkeyHeld());
}

class WithUmask : public testing::TestWithParam<mode_t> {};

TEST_P(WithUmask, FilesAreTheUsersAlone) {
    Session session({}, {.beforeExec = [mask = GetParam()] { umask(mask); }});
    ASSERT_TRUE(session.openOverlay());
    const auto& program = session.program;
    ASSERT_EQ(program.captureFiles().size(), 1U);
    ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(program.preferencesFile()); }));
    EXPECT_EQ(modeOf(program.captureFiles().front()), 0600U);
    EXPECT_EQ(modeOf(program.logFile()), 0600U);
    EXPECT_EQ(modeOf(program.preferencesFile()), 0600U);
    EXPECT_EQ(modeOf(program.temporaryDirectory()), 0700U);
}

INSTANTIATE_TEST_SUITE_P(StartUp, WithUmask, testing::Values(0, 077),
                         [](const auto& test) { return test.param == 0 ? "None" : "Strict"; });

} // namespace
} // namespace glimmerly::e2e

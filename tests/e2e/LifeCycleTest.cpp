// One instance, one orderly end.
#include "tests/e2e/support/Session.h"
#include "tests/support/ScratchDirectory.h"

#include <algorithm>
#include <csignal>

namespace glimmerly::e2e {
namespace {

std::vector<std::string> messages(const Glimmerly& program) {
    std::vector<std::string> found;
    for (const auto& line : program.log())
        found.push_back(line.value("message", ""));
    return found;
}

TEST(LifeCycle, OfManyStartsAtOnceOneStaysAndShowsItsSettings) {
    Desktop desktop({.windowManager = WindowManager::none});
    std::vector<ChildProcess*> starts;
    for (int i = 0; i < 8; ++i)
        starts.push_back(&desktop.start({Glimmerly::executable()}));
    const auto isRunning = [](ChildProcess* process) { return process->isRunning(); };
    ASSERT_TRUE(waitUntil([&] { return std::ranges::count_if(starts, isRunning) == 1; }));
    EXPECT_TRUE(waitUntil([&] { return desktop.client().visibleWindows().size() == 1; })) << "no window";
    for (auto* process : starts) {
        process->sendSignal(SIGTERM); // with its window open
        EXPECT_EQ(process->waitForExit(patience), 0);
    }
    const Glimmerly next(desktop);
    const auto all = messages(next);
    const auto end = std::ranges::find(all, "applicationWillTerminate"); // then come those of the next
    ASSERT_NE(end, all.end());
    EXPECT_EQ(std::count(all.begin(), end, "applicationDidFinishLaunching"), 1);
}

TEST(LifeCycle, EverySignalToEndRunsTheTerminationSequenceOnce) {
    for (const std::vector<int>& signals : {std::vector{SIGTERM}, {SIGINT}, {SIGHUP, SIGINT, SIGTERM}}) {
        SCOPED_TRACE(signals.size());
        Session session;
        ASSERT_TRUE(session.openOverlay());
        for (const int number : signals)
            session.program.process().sendSignal(number);
        EXPECT_EQ(session.program.process().waitForExit(patience), 0);
        EXPECT_EQ(session.program.log("applicationWillTerminate").size(), 1U);
        EXPECT_EQ(messages(session.program).back(), "applicationWillTerminate");
        EXPECT_FALSE(session.program.isHotkeyHeld());
        EXPECT_TRUE(session.program.captureFiles().empty()) << "an open overlay's file stays behind";
        EXPECT_EQ(session.program.errors(), "");
    }
}

TEST(LifeCycle, EndsInOrderWhileAnAlertWaits) {
    Session session;
    std::filesystem::remove_all(session.program.temporaryDirectory());
    writeContent(session.program.temporaryDirectory(), "in the way");
    session.robot.pressHotkey();
    ASSERT_TRUE(waitUntil([&] { return session.desktop.client().managedWindows().size() == 1; }));
    session.program.process().sendSignal(SIGTERM);
    EXPECT_EQ(session.program.process().waitForExit(patience), 0);
    EXPECT_EQ(messages(session.program).back(), "applicationWillTerminate");
}

TEST(LifeCycle, LosingTheDisplayIsAnEndLikeAnyOther) {
    Session session;
    session.desktop.server().kill();
    const auto status = session.program.process().waitForExit(patience);
    ASSERT_TRUE(status);
    EXPECT_LT(*status, 128) << "no crash";
    EXPECT_EQ(messages(session.program).back(), "applicationWillTerminate");
}

TEST(LifeCycle, WhatAKilledRunLeftBehindIsGoneAfterTheNextStart) {
    Session session;
    ASSERT_TRUE(session.openOverlay());
    session.program.process().sendSignal(SIGKILL);
    ASSERT_TRUE(session.program.process().waitForExit(patience));
    ASSERT_EQ(session.program.captureFiles().size(), 1U);
    const Glimmerly next(session.desktop);
    EXPECT_TRUE(next.captureFiles().empty());
}

TEST(LifeCycle, WithoutADisplayItSaysSo) {
    const ScratchDirectory home;
    auto environment = cleanEnvironment();
    environment["HOME"] = environment["XDG_RUNTIME_DIR"] = home.path();
    ChildProcess program(
        {.command = {Glimmerly::executable()}, .environment = environment, .errors = home.path() / "errors"});
    EXPECT_EQ(program.waitForExit(patience), 1);
    EXPECT_EQ(contentOf(home.path() / "errors"), "glimmerly: No connection to the X server.\n");
}

} // namespace
} // namespace glimmerly::e2e

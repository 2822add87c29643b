// The real program on an X server of its own: one instance, one orderly end.
#include "tests/app/ProgramRun.h"
#include "tests/platform/tray/StatusNotifierHost.h"
#include "tests/support/SessionBus.h"
#include "tests/support/XvfbServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;

constexpr int patience = 20'000; // milliseconds
const std::string launched = "Structured log file path";
const std::string lookedForPermission = "Checking menu bar status windows for title access";
const std::string foundPermission = "No suitable non-owned menu bar windows; using CGPreflight fallback";

TEST(ProgramTest, OfManyStartsAtOnceOneStaysAndOpensItsMenu) {
    const XvfbServer server;
    const ProgramHome home(server.display());
    std::vector<std::unique_ptr<QProcess>> starts;
    for (int i = 0; i < 8; ++i)
        starts.push_back(home.start());
    const auto running = [&] {
        return std::ranges::count_if(starts,
                                     [](const auto& p) { return p->state() != QProcess::NotRunning; });
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return running() == 1; }, patience));
    EXPECT_TRUE(QTest::qWaitFor([&] { return home.visibleWindows() == 1; }, patience)) << "no menu";
    for (const auto& process : starts) {
        if (process->state() == QProcess::NotRunning)
            EXPECT_EQ(process->exitCode(), 0) << process->readAll().toStdString();
        else
            EXPECT_EQ(exitStatusAfter(*process, SIGTERM), 0) << "with its menu open";
    }
    EXPECT_THAT(home.messages(),
                ElementsAre("applicationWillFinishLaunching", "applicationDidFinishLaunching", launched,
                            lookedForPermission, foundPermission, "applicationWillTerminate"));
}

TEST(ProgramTest, EndsOnceHoweverManySignalsCome) {
    const XvfbServer server;
    const ProgramHome home(server.display());
    const auto program = home.start();
    ASSERT_TRUE(home.waitForMessage(launched));
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        ::kill(static_cast<pid_t>(program->processId()), signal);
    EXPECT_EQ(exitStatusAfter(*program, SIGTERM), 0);
    EXPECT_EQ(std::ranges::count(home.messages(), "applicationWillTerminate"), 1);
    EXPECT_EQ(program->readAll().toStdString(), "");

    const auto next = home.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return home.messages().size() == 11; }, patience));
    EXPECT_EQ(exitStatusAfter(*next, SIGTERM), 0);
}

TEST(ProgramTest, EndsInOrderWhileAnAlertWaits) {
    const XvfbServer server;
    const SessionBus bus;
    StatusNotifierHost panel(bus.address());
    panel.start();
    const ProgramHome home(server.display(), bus.address());
    const auto program = home.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel.items.size() == 1; }, patience));
    // Where captures should go is a file now, so taking one fails.
    std::filesystem::remove_all(home.temporaryDirectory());
    writeContent(home.temporaryDirectory(), "in the way");
    panel.click(3); // "Take screenshot"
    ASSERT_TRUE(QTest::qWaitFor([&] { return home.visibleWindows() == 1; }, patience)) << "no alert";
    EXPECT_EQ(exitStatusAfter(*program, SIGTERM), 0);
    EXPECT_EQ(home.messages().back(), "applicationWillTerminate");
}

TEST(ProgramTest, QuitInAPanelsMenuEndsTheProgram) {
    const XvfbServer server;
    const SessionBus bus;
    StatusNotifierHost panel(bus.address());
    panel.start();
    const ProgramHome home(server.display(), bus.address());
    const auto program = home.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel.items.size() == 1; }, patience));
    const auto items = panel.menu().children;
    ASSERT_EQ(items.size(), 8);
    EXPECT_EQ(items[2].properties.value("label").toString(), "Take screenshot");
    EXPECT_EQ(qdbus_cast<QList<QStringList>>(items[2].properties.value("shortcut")),
              (QList<QStringList>{{"Super", "Shift", "A"}}));
    panel.click(items[7].id);
    ASSERT_TRUE(program->waitForFinished(patience));
    EXPECT_EQ(program->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program->exitCode(), 0);
    EXPECT_THAT(home.messages(),
                ElementsAre("applicationWillFinishLaunching", "applicationDidFinishLaunching", launched,
                            lookedForPermission, foundPermission, "Quit chosen from menu",
                            "applicationWillTerminate"));
}

TEST(ProgramTest, LosingTheDisplayIsAnEndLikeAnyOther) {
    XvfbServer server;
    const ProgramHome home(server.display());
    const auto program = home.start();
    ASSERT_TRUE(home.waitForMessage(launched));
    server.kill();
    ASSERT_TRUE(program->waitForFinished(patience));
    EXPECT_EQ(program->exitStatus(), QProcess::NormalExit) << "no crash";
    EXPECT_EQ(home.messages().back(), "applicationWillTerminate");
}

TEST(ProgramTest, WithoutADisplayItSaysSo) {
    const ProgramHome home("");
    const auto program = home.start();
    ASSERT_TRUE(program->waitForFinished(patience));
    EXPECT_EQ(program->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program->exitCode(), 1);
    EXPECT_EQ(program->readAll().toStdString(), "glimmerly: No connection to the X server.\n");
}

} // namespace
} // namespace glimmerly

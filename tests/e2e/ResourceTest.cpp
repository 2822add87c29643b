// An idle program does not wake up, and overlays that come and go cost nothing that stays.
#include "tests/e2e/support/Session.h"
#include "tests/support/ScratchDirectory.h"

#include <fmt/format.h>

#include <numeric>

namespace glimmerly::e2e {
namespace {

namespace fs = std::filesystem;

/// The number after `field` in a status file of /proc.
long statusValue(const fs::path& file, const std::string& field) {
    const auto text = contentOf(file);
    const auto place = text.find("\n" + field + ":");
    return place == std::string::npos ? 0 : std::stol(text.substr(place + field.size() + 2));
}

/// How often the threads of `process` have gone to sleep: each wake-up of an idle process adds one.
long sleepsOf(pid_t process) {
    long sleeps = 0;
    for (const auto& thread : fs::directory_iterator(fmt::format("/proc/{}/task", process)))
        sleeps += statusValue(thread.path() / "status", "voluntary_ctxt_switches");
    return sleeps;
}

std::ptrdiff_t openFilesOf(pid_t process) {
    return std::distance(fs::directory_iterator(fmt::format("/proc/{}/fd", process)), {});
}

TEST(Resources, AnIdleProgramDoesNotWakeUp) {
    Session session(Desktop::Options{.panel = Panel::tint2});
    ASSERT_TRUE(session.copySelection({10, 10}, {500, 500}));
    const auto process = session.program.process().pid();
    const auto staysAsleep = [process](std::chrono::seconds time) {
        const auto before = sleepsOf(process);
        return !waitUntil([&] { return sleepsOf(process) != before; }, time);
    };
    // Whatever follows the copy may still happen; after that, ten seconds of sleep.
    EXPECT_TRUE(waitUntil([&] { return staysAsleep(std::chrono::seconds(1)); }));
    EXPECT_TRUE(staysAsleep(std::chrono::seconds(10)));
}

TEST(Resources, TwoHundredOverlaysLeaveNothing) {
    Session session;
    const auto process = session.program.process().pid();
    const auto memory = [&] { return statusValue(fmt::format("/proc/{}/status", process), "VmRSS"); };
    const auto openAndClose = [&](int count) {
        for (int overlay = 0; overlay < count; ++overlay) {
            ASSERT_TRUE(session.openOverlay());
            session.robot.drag({100, 100}, {900, 700});
            session.robot.type({overlay % 2 == 0 ? Key::escape : Key::returnKey});
            ASSERT_TRUE(session.waitForNoOverlay());
        }
    };
    openAndClose(40);
    const auto memoryBefore = memory();
    const auto filesBefore = openFilesOf(process);
    openAndClose(200);
    EXPECT_LE(openFilesOf(process), filesBefore);
    EXPECT_LE(memory(), memoryBefore + 4096) << "kilobytes, from " << memoryBefore;
    EXPECT_TRUE(waitUntil([&] { return session.program.captureFiles().empty(); }));
}

} // namespace
} // namespace glimmerly::e2e

#include "diagnostics/LogLine.h"
#include "tests/diagnostics/LogSinkFixture.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <thread>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

using LogCrashTest = LogSinkFixture;

/// Logs from four threads for ever.
[[noreturn]] void logUntilKilled(const fs::path& support, const LogRecord& record) {
    GlimmerlyLogSink sink(support);
    std::vector<std::jthread> callers;
    for (int t = 0; t < 4; ++t)
        callers.emplace_back([&] {
            for (int i = 0;; ++i) {
                sink.write(record);
                if (i % 20 == 0)
                    (void)sink.eventsURL(); // not far ahead of the disk
            }
        });
    callers.clear();
    ::_exit(1);
}

bool waitUntilLarger(const fs::path& file, std::uintmax_t size) {
    const auto deadline = std::chrono::steady_clock::now() + 30s;
    while (std::chrono::steady_clock::now() < deadline) {
        std::error_code ignored;
        const auto now = fs::file_size(file, ignored);
        if (!ignored && now > size)
            return true;
        std::this_thread::yield();
    }
    return false;
}

TEST_F(LogCrashTest, LeavesWholeLinesAtWhateverMomentTheProcessIsKilled) {
    std::mt19937 random(42);
    plant(lineOfAge(1s));
    for (int round = 0; round < 12; ++round) {
        const auto goal = fs::file_size(file()) + random() % 20'000;
        const pid_t child = ::fork();
        if (child == 0)
            logUntilKilled(scratch_.path(), record(std::string(random() % 300, 'x')));
        const bool grew = waitUntilLarger(file(), goal);
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        ASSERT_TRUE(grew);
        EXPECT_TRUE(content().ends_with('\n'));
        for (const std::string& line : lines())
            ASSERT_TRUE(decodeLogLine(line)) << line;
    }
    GlimmerlyLogSink(scratch_.path()).bootstrap();
    EXPECT_EQ(namesIn(folder()), std::vector<std::string>{"events.jsonl"});
}

} // namespace
} // namespace glimmerly

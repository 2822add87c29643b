#include "diagnostics/GlimmerlyLogSink.h"

#include "diagnostics/LogLine.h"
#include "tests/diagnostics/LogSinkFixture.h"
#include "tests/support/ProcessState.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <array>
#include <latch>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
namespace fs = std::filesystem;

using GlimmerlyLogSinkTest = LogSinkFixture;

/// What the sink would do anyway, waited for.
void wait(GlimmerlyLogSink& sink) {
    (void)sink.eventsURL();
}

/// Logs a line with that message, and waits until it is written.
void writeLine(GlimmerlyLogSink& sink, const std::string& message = "line") {
    sink.write(LogSinkFixture::record(message));
    wait(sink);
}

TEST_F(GlimmerlyLogSinkTest, WritesTheExactLine) {
    GlimmerlyLogSink sink(scratch_.path(), clock());
    LogRecord full{GlimmerlyLog::Level::warning,
                   "Overlay",
                   "In/out",
                   "worker:log",
                   GlimmerlyLog::Metadata{{"caller", "a.cpp:1"}},
                   "It failed"};
    sink.write(full);
    full.level = GlimmerlyLog::Level::fault;
    full.metadata.reset();
    full.errorSummary.reset();
    sink.write(full);
    wait(sink);
    EXPECT_EQ(content(), R"({"category":"Overlay","errorSummary":"It failed","level":"warning",)"
                         R"("message":"In\/out","metadata":{"caller":"a.cpp:1"},)"
                         R"("threadName":"worker:log","ts":"2026-11-16T17:00:00.000Z"})"
                         "\n"
                         R"({"category":"Overlay","level":"fault","message":"In\/out",)"
                         R"("threadName":"worker:log","ts":"2026-11-16T17:00:00.000Z"})"
                         "\n");
}

TEST_F(GlimmerlyLogSinkTest, SetsUpItsPlaceForTheUserAlone) {
    const ScopedUmask umask(0777);
    const fs::path support = scratch_.path() / "not" / "there";
    GlimmerlyLogSink sink(support, clock());
    EXPECT_EQ(sink.eventsURL(), std::nullopt);
    sink.bootstrap();
    const fs::path expected = support / "app.glimmerly.Glimmerly" / ".svc" / "events.jsonl";
    EXPECT_EQ(sink.eventsURL(), expected);
    sink.bootstrap();
    EXPECT_EQ(fs::file_size(expected), 0U);
    EXPECT_EQ(modeOf(expected), 0600U);
    for (const fs::path& made : {support, expected.parent_path(), expected.parent_path().parent_path()})
        EXPECT_EQ(modeOf(made), 0700U);
    for (int i = 0; i < 50; ++i)
        sink.write(record("line"));
    sink.flush();
    EXPECT_EQ(modeOf(expected), 0600U) << "after pruning";
}

TEST_F(GlimmerlyLogSinkTest, PrunesAndClosesToOthersWhatItFinds) {
    plant(lineOfAge(601s) + "garbage\n  " + lineOfAge(599s, "kept"));
    fs::permissions(file(), fs::perms(0666));
    GlimmerlyLogSink sink(scratch_.path(), clock());
    sink.bootstrap();
    EXPECT_EQ(content(), lineOfAge(599s, "kept"));
    EXPECT_EQ(modeOf(file()), 0600U);
}

TEST_F(GlimmerlyLogSinkTest, AddsToAFileThatCannotBePruned) {
    plant(lineOfAge(700s) + "\xff\n");
    GlimmerlyLogSink sink(scratch_.path(), clock());
    writeLine(sink, "new");
    EXPECT_THAT(lines(), ElementsAre(testing::_, "\xff", HasSubstr("new")));
}

TEST_F(GlimmerlyLogSinkTest, LeavesAFileAsItIsThatIsTooLargeToRead) {
    plant(lineOfAge(700s));
    constexpr std::uintmax_t size = std::uintmax_t{1} << 43; // of which a file system keeps one block
    std::filesystem::resize_file(file(), size);
    GlimmerlyLogSink sink(scratch_.path(), clock());
    writeLine(sink, "new");
    EXPECT_GT(std::filesystem::file_size(file()), size);
}

TEST_F(GlimmerlyLogSinkTest, PrunesAtTheFiftiethLine) {
    GlimmerlyLogSink sink(scratch_.path(), clock());
    sink.bootstrap();
    for (int round = 0; round < 2; ++round) {
        writeContent(file(), lineOfAge(660s));
        for (int i = 0; i < 49; ++i)
            writeLine(sink);
        EXPECT_THAT(content(), HasSubstr("planted"));
        writeLine(sink);
        EXPECT_THAT(content(), Not(HasSubstr("planted")));
        EXPECT_EQ(lines().size(), 50U);
    }
}

TEST_F(GlimmerlyLogSinkTest, PrunesAtALineThirtySecondsAfterTheLastTime) {
    GlimmerlyLogSink sink(scratch_.path(), clock());
    writeLine(sink, "first");
    for (int round = 0; round < 2; ++round) {
        plant(content() + lineOfAge(660s));
        advance(29s);
        writeLine(sink, "too early");
        EXPECT_THAT(content(), HasSubstr("planted"));
        advance(1s);
        writeLine(sink, "in time");
        EXPECT_THAT(content(), Not(HasSubstr("planted")));
        EXPECT_THAT(content(), HasSubstr("first"));
    }
}

TEST_F(GlimmerlyLogSinkTest, KeepsItsOwnLinesForTenMinutes) {
    GlimmerlyLogSink sink(scratch_.path(), clock());
    writeLine(sink, "first");
    advance(300s);
    writeLine(sink, "second");
    advance(300s);
    sink.flush();
    EXPECT_THAT(lines(), ElementsAre(HasSubstr("first"), HasSubstr("second")));
    advance(1s);
    sink.flush();
    EXPECT_THAT(lines(), ElementsAre(HasSubstr("second")));
    advance(600s);
    sink.flush();
    EXPECT_EQ(fs::file_size(file()), 0U);
    sink.write(record("third"));
    sink.flush();
    EXPECT_THAT(lines(), ElementsAre(HasSubstr("third")));
}

TEST_F(GlimmerlyLogSinkTest, NoticesThatOthersChangedTheFile) {
    GlimmerlyLogSink sink(scratch_.path(), clock());
    writeLine(sink);
    const std::string written = content();
    std::string aged = written;
    aged.replace(aged.find("2026"), 4, "2025");

    const auto changeInPlace = [&] {
        writeContent(file(), aged); // as long as before
        fs::last_write_time(file(), fs::last_write_time(file()) + 1s);
    };
    changeInPlace();
    sink.flush();
    EXPECT_EQ(content(), "") << "changed in place";

    writeLine(sink);
    changeInPlace();
    sink.write(record("line"));
    sink.flush();
    EXPECT_EQ(content(), written) << "changed before a line";

    for (const bool isReplaced : {false, true}) {
        fs::rename(file(), folder() / "before");
        if (isReplaced)
            writeContent(file(), "");
        sink.flush();
        writeLine(sink);
        EXPECT_EQ(content(), written) << (isReplaced ? "replaced" : "taken away");
    }
}

TEST_F(GlimmerlyLogSinkTest, DropsLinesWhereNothingCanBeWritten) {
    writeContent(scratch_.path() / "file", "");
    fs::create_directory(scratch_.path() / "real");
    fs::create_directory(scratch_.path() / "planted");
    fs::create_directory_symlink("../real", scratch_.path() / "planted" / "app.glimmerly.Glimmerly");
    for (const std::optional<fs::path>& support :
         {std::optional<fs::path>(), std::optional(scratch_.path() / "file"),
          std::optional(scratch_.path() / "planted")}) {
        GlimmerlyLogSink sink(support, clock());
        sink.bootstrap();
        sink.write(record("lost"));
        sink.flush();
        EXPECT_EQ(sink.eventsURL(), std::nullopt);
    }
    EXPECT_TRUE(fs::is_empty(scratch_.path() / "real"));
    EXPECT_TRUE(fs::is_empty(scratch_.path() / "file"));
}

TEST_F(GlimmerlyLogSinkTest, FollowsNoLinkAndWaitsForNoPipeInPlaceOfItsFile) {
    fs::create_directories(folder());
    writeContent(scratch_.path() / "victim", lineOfAge(700s));
    fs::create_symlink(scratch_.path() / "victim", file());
    {
        GlimmerlyLogSink sink(scratch_.path(), clock());
        sink.write(record("lost"));
        sink.flush();
    }
    EXPECT_EQ(contentOf(scratch_.path() / "victim"), lineOfAge(700s));
    fs::remove(file());
    ASSERT_EQ(::mkfifo(file().c_str(), 0600), 0);
    GlimmerlyLogSink sink(scratch_.path(), clock());
    sink.write(record("lost"));
    sink.flush();
    fs::remove(file());
    sink.write(record("kept"));
    sink.flush();
    EXPECT_THAT(lines(), ElementsAre(HasSubstr("kept"))) << "once nothing is in the way";
}

TEST_F(GlimmerlyLogSinkTest, LeavesWholeLinesOnAFullDisk) {
    GlimmerlyLogSink sink(scratch_.path(), clock());
    writeLine(sink, "whole");
    {
        const FileSizeLimit limit(200);
        for (int i = 0; i < 3; ++i)
            writeLine(sink, "too much");
        EXPECT_THAT(lines(), ElementsAre(HasSubstr("whole"))) << "no fragment behind it";
    }
    writeLine(sink, "again");
    EXPECT_THAT(lines(), ElementsAre(HasSubstr("whole"), HasSubstr("again")));
    EXPECT_THAT(namesIn(folder()), ElementsAre("events.jsonl"));
}

TEST_F(GlimmerlyLogSinkTest, KeepsTheOrderOfEightThreadsAndLosesNothing) {
    constexpr int threads = 8;
    constexpr int count = 1000;
    {
        GlimmerlyLogSink sink(scratch_.path(), clock());
        std::vector<std::jthread> callers;
        for (int t = 0; t < threads; ++t)
            callers.emplace_back([&, t] {
                for (int i = 0; i < count; ++i) {
                    LogRecord numbered = record(std::to_string(i));
                    numbered.threadName = std::to_string(t);
                    sink.write(std::move(numbered));
                }
            });
    }
    std::array<int, threads> next{};
    for (const std::string& text : lines()) {
        const auto line = decodeLogLine(text);
        ASSERT_TRUE(line) << text;
        EXPECT_EQ(line->message, std::to_string(next.at(std::stoul(line->threadName))++));
    }
    EXPECT_THAT(next, testing::Each(count));
}

TEST_F(GlimmerlyLogSinkTest, DoesNotMakeCallersWaitForItsWork) {
    std::latch mayGoOn(1);
    GlimmerlyLogSink sink(scratch_.path(), [&] {
        mayGoOn.wait(); // the queue stands still at the first line, like on a disk that does not answer
        return start;
    });
    {
        std::vector<std::jthread> callers;
        for (int t = 0; t < 8; ++t)
            callers.emplace_back([&] {
                for (int i = 0; i < 500; ++i)
                    sink.write(record("line"));
            });
    }
    EXPECT_THAT(lines(), IsEmpty());
    mayGoOn.count_down();
    sink.flush();
    EXPECT_EQ(lines().size(), 4000U);
}

} // namespace
} // namespace glimmerly

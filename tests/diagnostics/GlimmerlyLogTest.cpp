#include "diagnostics/GlimmerlyLog.h"

#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::MatchesRegex;
using testing::Pair;

enum class Trouble { none, some };
Error makeError(Trouble trouble) {
    return enumError("Glimmerly.Trouble", trouble);
}

TEST(GlimmerlyLog, AddsItsCallerAndDescribesErrorsButKeepsTheKeysItIsGiven) {
    LogCapture log;
    const Error error = Trouble::some;
    GlimmerlyLog::warning("A", "1", {{"size", "3"}}, error);
    GlimmerlyLog::error("A", "2", {{"caller", "me"}, {"errorDomain", "mine"}, {"errorCode", "-1"}}, error);
    GlimmerlyLog::warning("A", "plain");
    const auto caller = "GlimmerlyLogTest.cpp:" + std::to_string(__LINE__ - 1);
    const auto records = log.records();
    EXPECT_THAT(*records[0].metadata,
                ElementsAre(Pair("caller", MatchesRegex("GlimmerlyLogTest\\.cpp:[0-9]+")),
                            Pair("errorCode", "1"), Pair("errorDomain", "Glimmerly.Trouble"),
                            Pair("size", "3")));
    EXPECT_THAT(*records[1].metadata,
                ElementsAre(Pair("caller", "me"), Pair("errorCode", "-1"), Pair("errorDomain", "mine")));
    EXPECT_EQ(records[1].errorSummary, error.description());
    EXPECT_THAT(*records[2].metadata, ElementsAre(Pair("caller", caller)));
    EXPECT_EQ(records[2].errorSummary, std::nullopt);
}

TEST(GlimmerlyLog, NamesTheThreadThatCalled) {
    LogCapture log;
    GlimmerlyLog::info("A", "1");
    std::thread([] { GlimmerlyLog::info("A", "2"); }).join();
    EXPECT_EQ(log.records()[0].threadName, "main");
    EXPECT_EQ(log.records()[1].threadName, "worker");
}

} // namespace
} // namespace glimmerly

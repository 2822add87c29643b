#include "diagnostics/LogPruning.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;

const UtcTime cutoff = *parseIso8601("2026-11-16T17:30:00.000Z", Iso8601Form::milliseconds);

std::string lineAt(const std::string& ts) {
    return R"({"category":"c","level":"info","message":"m","threadName":"main","ts":")" + ts + "\"}";
}

const std::string recent = lineAt("2026-11-16T17:30:00.000Z");
const std::string old = lineAt("2026-11-16T17:29:59.999Z");

TEST(LogPruning, KeepsRecentLinesAsTheyAreAndDropsTheRest) {
    struct Case {
        const char* what;
        std::string text;
        std::string kept;
    };
    const std::string withoutFraction = lineAt("2026-11-16T17:31:00Z");
    const std::string unsorted = R"({"ts":"2026-11-16T17:31:00Z", "threadName":"main", "level":"odd",)"
                                 R"( "category":"/", "message":"m", "new":1})";
    for (const Case& c : {
             Case{"old and recent", old + "\n" + recent + "\n", recent + "\n"},
             Case{"order", withoutFraction + "\n" + recent + "\n", withoutFraction + "\n" + recent + "\n"},
             Case{"no line feed at the end", recent, recent + "\n"},
             Case{"a foreign but valid form", unsorted + "\n", unsorted + "\n"},
             Case{"blanks and carriage returns", "  \t" + recent + " \r\n\n\r\n", recent + "\n"},
             Case{"Unicode blanks and controls", "\u00a0\u2003\u0085" + recent + "\u3000\u2028\x7f\n",
                  recent + "\n"},
             Case{"zeros of a torn write", recent + "\n" + std::string(64, '\0'), recent + "\n"},
             Case{"a fragment", recent.substr(0, 40) + "\n" + recent, recent + "\n"},
             Case{"two lines run together", recent + recent + "\n", ""},
             Case{"no thread", R"({"category":"c","level":"i","message":"m","ts":"2026-11-16T17:31:00Z"})",
                  ""},
             Case{"no time", lineAt("yesterday"), ""},
             Case{"garbage only", "garbage\n\n \n", ""},
             Case{"old only", old + "\n" + old + "\n", ""},
             Case{"long ago and far ahead",
                  lineAt("0000-01-01T00:00:00Z") + "\n" + lineAt("9999-12-31T23:59:59.999Z"),
                  lineAt("9999-12-31T23:59:59.999Z") + "\n"},
         }) {
        const auto pruned = pruneLog(c.text, cutoff);
        ASSERT_TRUE(pruned) << c.what;
        EXPECT_EQ(pruned->text, c.kept) << c.what;
    }
}

TEST(LogPruning, LeavesEmptyTextAndOtherEncodingsAlone) {
    EXPECT_FALSE(pruneLog("", cutoff));
    EXPECT_FALSE(pruneLog(old + "\n\xff\n", cutoff));
}

TEST(LogPruning, TellsTheEarliestTimeKept) {
    const std::string later = lineAt("2026-11-16T17:35:00.000Z");
    EXPECT_EQ(pruneLog(later + "\n" + recent + "\n" + old, cutoff)->oldest, cutoff);
    EXPECT_EQ(pruneLog(later, cutoff)->oldest, cutoff + 5min);
    EXPECT_EQ(pruneLog(old, cutoff)->oldest, UtcTime::max());
}

} // namespace
} // namespace glimmerly

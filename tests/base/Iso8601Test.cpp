#include "base/Iso8601.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using namespace std::chrono;
using enum Iso8601Form;

constexpr UtcTime someTime = sys_days(2026y / November / 16) + 17h + 29min + 5s + 123ms;

TEST(Iso8601, WritesBothForms) {
    EXPECT_EQ(formatIso8601(someTime, milliseconds), "2026-11-16T17:29:05.123Z");
    EXPECT_EQ(formatIso8601(someTime, seconds), "2026-11-16T17:29:05Z");
    EXPECT_EQ(formatIso8601(UtcTime(-1ms), milliseconds), "1969-12-31T23:59:59.999Z");
    EXPECT_EQ(formatIso8601(sys_days(2024y / February / 29), milliseconds), "2024-02-29T00:00:00.000Z");
}

TEST(Iso8601, ReadsWhatItWrites) {
    for (const UtcTime time : {someTime, UtcTime(-1ms), UtcTime(sys_days(0y / January / 1)),
                               UtcTime(sys_days(9999y / December / 31) + 24h - 1ms)}) {
        EXPECT_EQ(parseIso8601(formatIso8601(time, milliseconds), milliseconds), time);
        EXPECT_EQ(parseIso8601(formatIso8601(time, seconds), seconds), floor<std::chrono::seconds>(time));
    }
}

TEST(Iso8601, ReadsNothingElse) {
    for (const char* text :
         {"", "2026-11-16", "2026-11-16T17:29:05.12Z", "2026-11-16T17:29:05.1234Z",
          "2026-11-16T17:29:05,123Z", "2026-11-16T17:29:05.123", "2026-11-16T17:29:05.123z",
          "2026-11-16 17:29:05.123Z", "2026-11-16T17:29:05.123+00:00", " 2026-11-16T17:29:05.123Z",
          "2026-13-16T17:29:05.123Z", "2026-00-16T17:29:05.123Z", "2025-02-29T17:29:05.123Z",
          "2026-11-00T17:29:05.123Z", "2026-11-16T24:00:00.000Z", "2026-11-16T17:60:05.123Z",
          "2026-11-16T17:29:60.123Z", "+026-11-16T17:29:05.123Z", "2026-11-16T17:29:05Z"})
        EXPECT_EQ(parseIso8601(text, milliseconds), std::nullopt) << text;
    EXPECT_EQ(parseIso8601("2026-11-16T17:29:05.123Z", seconds), std::nullopt);
}

} // namespace
} // namespace glimmerly

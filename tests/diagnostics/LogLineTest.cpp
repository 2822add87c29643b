#include "diagnostics/LogLine.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using Metadata = std::map<std::string, std::string>;

const LogLine minimal{"2026-11-16T17:29:05.123Z", "info", "Overlay", "Shown", "main", {}, {}};

TEST(LogLine, WritesCompactJsonWithSortedKeysAndEscapesTheSolidusToo) {
    EXPECT_EQ(encodeLogLine(minimal), R"({"category":"Overlay","level":"info","message":"Shown",)"
                                      R"("threadName":"main","ts":"2026-11-16T17:29:05.123Z"})");
    LogLine full = minimal;
    full.metadata = Metadata{{"caller", "a.cpp:1"}, {"é", "3"}, {"a/b", "/tmp/\"x\"\\\n\t\x01\x7f é😀"}};
    full.errorSummary = "It failed";
    EXPECT_EQ(encodeLogLine(full),
              R"({"category":"Overlay","errorSummary":"It failed","level":"info","message":"Shown",)"
              R"("metadata":{"a\/b":"\/tmp\/\"x\"\\\n\t\u0001)"
              "\x7f é😀"
              R"(","caller":"a.cpp:1","é":"3"},"threadName":"main","ts":"2026-11-16T17:29:05.123Z"})");
    EXPECT_EQ(decodeLogLine(encodeLogLine(full)), full);
}

TEST(LogLine, ReplacesBytesThatAreNotUtf8) {
    LogLine line = minimal;
    line.message = "a\xff\x80z";
    line.metadata = Metadata{{"key\xe2\x82", "cut \xf0\x9f"}};
    LogLine expected = minimal;
    expected.message = "a\uFFFD\uFFFDz";
    expected.metadata = Metadata{{"key\uFFFD", "cut \uFFFD"}};
    EXPECT_EQ(decodeLogLine(encodeLogLine(line)), expected);
}

std::string withField(const std::string& field) {
    return R"({"ts":"t","level":"l","category":"c","message":"m","threadName":"n",)" + field + "}";
}

TEST(LogLine, ReadsOnlyCompleteObjects) {
    struct Case {
        std::string text;
        bool readable;
    };
    for (const Case& c : {
             Case{withField(R"("extra":[1,{"x":null}])"), true},
             Case{withField(R"("metadata":null,"errorSummary":null)"), true},
             Case{withField(R"("metadata":{},"errorSummary":"")"), true},
             Case{withField(R"("metadata":{"a":1})"), false},
             Case{withField(R"("metadata":["a"])"), false},
             Case{withField(R"("errorSummary":7)"), false},
             Case{withField(R"("ts":null)"), false},
             Case{R"({"ts":"t","level":"l","category":"c","message":"m"})", false},
             Case{R"({"ts":"t","level":"l","category":"c","message":"m","threadName":"n")", false},
             Case{withField(R"("extra":1)") + "{}", false},
             Case{"[]", false},
             Case{"garbage", false},
             Case{"", false},
             Case{std::string(100'000, '['), false},
         })
        EXPECT_EQ(decodeLogLine(c.text).has_value(), c.readable) << c.text.substr(0, 200);
}

} // namespace
} // namespace glimmerly

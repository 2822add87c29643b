#include "base/Utf8.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using namespace std::string_view_literals;

TEST(Utf8, TellsWellFormedTextFromOther) {
    struct Case {
        const char* what;
        std::string_view text;
        bool valid;
    };
    for (const Case& c : {
             Case{"nothing", ""sv, true},
             Case{"ASCII with a zero", "a\0z\x7f"sv, true},
             Case{"the ends of each length", "\u0080\u07ff\u0800\ud7ff\ue000\uffff\U00010000\U0010ffff"sv,
                  true},
             Case{"a lone continuation", "a\x80"sv, false},
             Case{"a sequence cut short", "\xe2\x82"sv, false},
             Case{"a sequence broken by ASCII", "\xe2\x82z"sv, false},
             Case{"overlong slash, 2 bytes", "\xc0\xaf"sv, false},
             Case{"overlong slash, 3 bytes", "\xe0\x80\xaf"sv, false},
             Case{"a surrogate", "\xed\xa0\x80"sv, false},
             Case{"beyond Unicode", "\xf4\x90\x80\x80"sv, false},
             Case{"no lead byte", "\xff"sv, false},
         })
        EXPECT_EQ(isUtf8(c.text), c.valid) << c.what;
}

TEST(Utf8, TakesOneCharacterOrLeavesTheText) {
    std::string_view text = "é€😀";
    EXPECT_EQ(takeUtf8(text), U'é');
    EXPECT_EQ(takeUtf8(text), U'€');
    EXPECT_EQ(takeUtf8(text), U'😀');
    EXPECT_EQ(takeUtf8(text), std::nullopt);
    text = "\x80";
    EXPECT_EQ(takeUtf8(text), std::nullopt);
    EXPECT_EQ(text.size(), 1U);
}

} // namespace
} // namespace glimmerly

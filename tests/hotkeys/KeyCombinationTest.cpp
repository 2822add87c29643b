#include "hotkeys/model/KeyCombination.h"

#include "tests/support/FakeKeyboardLayout.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

KeyCombination combination(std::int64_t key, std::int64_t modifiers) {
    return {KeyCode{key}, Modifiers(modifiers)};
}

TEST(KeyNames, SpecialKeysAreCalledTheSameOnEveryLayout) {
    const FakeKeyboardLayout layout({{49, " "}, {122, "x"}, {82, "0"}});
    EXPECT_EQ(specialKeyNames().size(), 66U);
    EXPECT_EQ(keyDisplayName(KeyCode{49}, layout), "Space");
    EXPECT_EQ(keyDisplayName(KeyCode{122}, layout), "F1");
    EXPECT_EQ(keyDisplayName(KeyCode{82}, layout), "0\xE2\x83\xA3");
    EXPECT_EQ(keyDisplayName(KeyCode{63}, layout), "\xF0\x9F\x8C\x90\xEF\xB8\x8E\xEF\xB8\x8E");
    EXPECT_EQ(keyDisplayName(KeyCode{114}, layout), "?\xE2\x83\x9D");
}

TEST(KeyNames, OtherKeysAreCalledWhatTheLayoutPrints) {
    const FakeKeyboardLayout layout({{0, "q"}});
    EXPECT_EQ(keyDisplayName(KeyCode{0}, layout), "q");
    EXPECT_EQ(keyDisplayName(KeyCode{1}, layout), "");
    EXPECT_EQ(keyDisplayName(KeyCode{70000}, layout), "");
}

struct TextCase {
    const char* printed;
    const char* display; ///< of the key with shift and command
    const char* equivalent;
};

constexpr TextCase textCases[] = {
    {"a", "⇧⌘ A", "a"},
    {"É", "⇧⌘ É", "é"},
    {"ж", "⇧⌘ Ж", "ж"},
    {"ω", "⇧⌘ Ω", "ω"},
    {"e\u0301", "⇧⌘ E\u0301", "e\u0301"},
    {"\U00010428", "⇧⌘ \U00010400", "\U00010428"},
    {"ab CD", "⇧⌘ Ab Cd", ""},
    {";", "⇧⌘ ;", ";"},
    {"\r", "⇧⌘ \r", "\r"},
    {"", "⇧⌘ ", ""},
};

TEST(KeyCombination, IsShownCapitalisedAndOfferedInLowerCase) {
    for (const TextCase& c : textCases) {
        const FakeKeyboardLayout layout({{0, c.printed}});
        EXPECT_EQ(combination(0, 12).displayString(layout), c.display);
        EXPECT_EQ(menuKeyEquivalent(KeyCode{0}, Modifiers(12), layout),
                  (KeyEquivalent{c.equivalent, 0x120000}));
    }
}

TEST(KeyCombination, SpecialNamesAreShownButDoNotCountInMenus) {
    const FakeKeyboardLayout layout({{49, " "}});
    EXPECT_EQ(combination(49, 10).displayString(layout), "⌥⌘ Space");
    EXPECT_EQ(menuKeyEquivalent(KeyCode{49}, Modifiers(10), layout), (KeyEquivalent{" ", 0x180000}));
    EXPECT_EQ(combination(122, 8).displayString(layout), "⌘ F1");
    EXPECT_EQ(menuKeyEquivalent(KeyCode{122}, Modifiers(8), layout), (KeyEquivalent{"", 0x100000}));
}

TEST(StoredForm, RoundTrips) {
    EXPECT_EQ(combination(0, 12).encoded(), "[0,12]");
    for (const auto& value :
         {combination(0, 12), combination(49, 9), combination(70000, -5),
          combination(std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min())}) {
        const auto decoded = KeyCombination::decode(value.encoded());
        ASSERT_TRUE(decoded) << value.encoded();
        EXPECT_EQ(*decoded, value);
    }
    EXPECT_EQ(KeyCombination::decode(" [ 49 ,\n9 ] ").value(), combination(49, 9));
}

struct BadStoredForm {
    const char* json;
    DecodingError error;
    const char* description; ///< how it begins
};

constexpr BadStoredForm badStoredForms[] = {
    {"[0]", DecodingError::dataCorrupted, "Expected 2 encoded values, found 1"},
    {"[0,12,1]", DecodingError::dataCorrupted, "Expected 2 encoded values, found 3"},
    {"[]", DecodingError::dataCorrupted, "Expected 2 encoded values, found 0"},
    {"[\"a\",12]", DecodingError::typeMismatch, "Expected an integer, found string"},
    {"[0,1.5]", DecodingError::typeMismatch, "Expected an integer"},
    {"[0,null]", DecodingError::typeMismatch, "Expected an integer"},
    {"[true,1]", DecodingError::typeMismatch, "Expected an integer"},
    {"{\"key\":0}", DecodingError::typeMismatch, "Expected an array, found object"},
    {"[0,18446744073709551615]", DecodingError::dataCorrupted, "The number 18446744073709551615"},
    {"[0,12", DecodingError::dataCorrupted, "The given data was not valid JSON"},
    {"\xFF\xFE\x01", DecodingError::dataCorrupted, "The given data was not valid JSON"},
    {"", DecodingError::dataCorrupted, "The given data was not valid JSON"},
};

TEST(StoredForm, TellsWhatIsWrong) {
    for (const BadStoredForm& bad : badStoredForms) {
        const auto decoded = KeyCombination::decode(bad.json);
        ASSERT_FALSE(decoded) << bad.json;
        EXPECT_EQ(decoded.error().code(), static_cast<int>(bad.error)) << bad.json;
        EXPECT_TRUE(decoded.error().description().starts_with(bad.description))
            << decoded.error().description();
    }
}

} // namespace
} // namespace glimmerly

#include "platform/x11/X11KeyboardLayout.h"

#include "TestKeyboard.h"
#include "hotkeys/model/KeyCombination.h"

#include <QTest>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

constexpr int bound = 10'000; // milliseconds

struct LayoutCase {
    const char* layouts;
    xkb_layout_index_t currentGroup;
    std::int64_t key;
    std::optional<std::string> text;
};

const LayoutCase layoutCases[] = {
    {"us", 0, 0, "a"},
    {"us", 0, 41, ";"},
    {"us", 0, 49, " "},
    {"us", 0, 36, "\r"},
    {"us", 0, 84, "2"}, // on the keypad, without Num Lock
    {"us", 0, 65, "."},
    {"us", 0, 122, std::nullopt},
    {"us", 0, 126, std::nullopt},
    {"fr", 0, 0, "q"},
    {"fr", 0, 19, "é"},
    {"fr", 0, 33, "^"}, // a dead key
    {"de", 0, 16, "z"},
    {"tr", 0, 34, "ı"},
    // Another script: the Latin layout beside it, wherever that stands, else a US keyboard.
    {"ru", 0, 0, "a"},
    {"fr,ru", 1, 0, "q"},
    {"ru,de", 0, 16, "z"},
    {"us,fr", 1, 0, "q"},
    {"gr", 0, 12, "q"},
    {"no such layout", 0, 12, "q"},
};

TEST(X11KeyboardSymbols, PrintWhatTheAsciiCapableGroupPrints) {
    const XkbContext context = makeXkbContext();
    for (const LayoutCase& c : layoutCases) {
        const X11KeyboardSymbols symbols(compileKeymap(*context, c.layouts), c.currentGroup);
        EXPECT_EQ(symbols.text(TestKeyboard::keycode(c.key)), c.text) << c.layouts << " key " << c.key;
    }
}

TEST(X11KeyboardLayout, FollowsTheUserToAnotherLayoutAndGroup) {
    TestKeyboard keyboard;
    TestKeyboard::setLayout("-layout us,fr");
    const auto layout = X11KeyboardLayout::open().value();
    int changes = 0;
    auto observation = layout->observe([&] { ++changes; });
    ASSERT_EQ(layout->translate(0), "a");
    EXPECT_EQ(layout->translateShifted(18), "!");

    keyboard.lock(0, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes > 0 && layout->translate(0) == "q"; }, bound));
    changes = 0;
    TestKeyboard::setLayout("-layout us -variant dvorak");
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes > 0 && layout->translate(1) == "o"; }, bound));
    EXPECT_EQ(KeyCombination(KeyCode{1}, Modifiers(12)).displayString(*layout), "⇧⌘ O");
    changes = 0;
    observation.reset();
    keyboard.lock(0, 0);
    TestKeyboard::setLayout("-layout de");
    EXPECT_TRUE(QTest::qWaitFor([&] { return layout->translate(16) == "z"; }, bound));
    EXPECT_EQ(changes, 0) << "nobody hears any more";
}

TEST(X11KeyboardLayout, ModifiersAndLocksAreNoChange) {
    TestKeyboard keyboard;
    const auto layout = X11KeyboardLayout::open().value();
    int changes = 0;
    auto observation = layout->observe([&] { ++changes; });
    keyboard.tap(virtual_key::ansiA); // the first key of the test's keyboard makes it the current one
    TestKeyboard::run("xset q > /dev/null");
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    changes = 0;
    keyboard.tap(TestKeyboard::shiftKey);
    keyboard.tap(TestKeyboard::numLock);
    keyboard.tap(TestKeyboard::numLock);
    TestKeyboard::run("xset q > /dev/null");
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 0);
}

TEST(X11KeyboardLayout, KeysThatAreNoneOrPrintNothingHaveNoText) {
    const TestKeyboard keyboard;
    const auto layout = X11KeyboardLayout::open().value();
    EXPECT_EQ(layout->translate(0), "a");
    for (const std::int64_t key : {52, -1, 63, 70000})
        EXPECT_EQ(layout->translate(key), std::nullopt) << key;
}

} // namespace
} // namespace glimmerly

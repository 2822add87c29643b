#include "hotkeys/model/Modifiers.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

struct ModifierCase {
    std::int64_t rawValue;
    std::uint64_t eventFlags;
    std::uint32_t carbonFlags;
    const char* glyphs;
};

constexpr ModifierCase modifierCases[] = {
    {0, 0, 0, ""},
    {1, 0x40000, 0x1000, "⌃"},
    {2, 0x80000, 0x800, "⌥"},
    {4, 0x20000, 0x200, "⇧"},
    {8, 0x100000, 0x100, "⌘"},
    {12, 0x120000, 0x300, "⇧⌘"},
    {15, 0x1E0000, 0x1B00, "⌃⌥⇧⌘"},
};

TEST(Modifiers, ConvertBothWaysAndShowTheirGlyphsInOrder) {
    for (const ModifierCase& c : modifierCases) {
        const Modifiers modifiers(c.rawValue);
        EXPECT_EQ(modifiers.eventModifierFlags(), c.eventFlags) << c.glyphs;
        EXPECT_EQ(modifiers.carbonFlags(), c.carbonFlags) << c.glyphs;
        EXPECT_EQ(modifiers.glyphString(), c.glyphs);
        EXPECT_EQ(Modifiers::fromEventModifierFlags(c.eventFlags), modifiers);
        EXPECT_EQ(Modifiers::fromCarbonFlags(c.carbonFlags), modifiers);
    }
}

TEST(Modifiers, IgnoreFlagsOfOtherKeys) {
    const std::uint64_t otherEventFlags = ~std::uint64_t{0x1E0000};
    EXPECT_EQ(Modifiers::fromEventModifierFlags(0x120000 | otherEventFlags), Modifiers(12));
    const std::uint32_t otherCarbonFlags = ~std::uint32_t{0x1B00};
    EXPECT_EQ(Modifiers::fromCarbonFlags(0x300 | otherCarbonFlags), Modifiers(12));
    EXPECT_EQ(Modifiers(-5).carbonFlags(), 0x1900U) << "bits beyond the four mean nothing";
}

} // namespace
} // namespace glimmerly

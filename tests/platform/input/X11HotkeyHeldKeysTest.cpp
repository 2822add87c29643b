#include "platform/x11/X11HotkeyHeldKeys.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using Press = X11HotkeyHeldKeys::Press;
using Order = X11HotkeyHeldKeys::Order;

constexpr xcb_keycode_t a = 38;

TEST(X11HotkeyHeldKeys, APressCountsOnceUntilTheRelease) {
    X11HotkeyHeldKeys keys;
    EXPECT_EQ(keys.press(a, 1000, Order::kept), Press::first);
    EXPECT_EQ(keys.press(a, 1660, Order::kept), Press::repeated);
    EXPECT_EQ(keys.press(a, 1700, Order::kept), Press::repeated);
    EXPECT_TRUE(keys.anyHeld());
    keys.release(a, 1710);
    EXPECT_FALSE(keys.anyHeld());
    EXPECT_EQ(keys.press(a, 1710, Order::kept), Press::first) << "within the same millisecond";
    EXPECT_EQ(keys.press(a + 1, 1712, Order::kept), Press::first);
}

TEST(X11HotkeyHeldKeys, TimestampsDecideWhenNewsComesOutOfOrder) {
    X11HotkeyHeldKeys keys;
    keys.press(a, 1000, Order::byTime);
    keys.release(a, 1700);
    EXPECT_EQ(keys.press(a, 1690, Order::byTime), Press::repeated) << "a repeat read after the release";
    keys.press(a, 2000, Order::byTime);
    keys.release(a, 1900);
    EXPECT_EQ(keys.press(a, 2600, Order::byTime), Press::repeated) << "a release from before the press";
}

TEST(X11HotkeyHeldKeys, AMissedReleaseAndAnOldOneDoNotSilenceAKey) {
    X11HotkeyHeldKeys keys;
    keys.press(a, 1000, Order::byTime);
    EXPECT_EQ(keys.press(a, 1000 + 60'000, Order::byTime), Press::first);
    keys.release(a, 61'100);
    for (const std::uint32_t days : {1U, 24U, 26U, 49U})
        EXPECT_EQ(X11HotkeyHeldKeys(keys).press(a, 61'100U + days * 86'400'000U, Order::byTime), Press::first)
            << days;
    const xcb_timestamp_t beforeWrap = 0xFFFFFFF0;
    EXPECT_EQ(keys.press(a, beforeWrap, Order::byTime), Press::first);
    EXPECT_EQ(keys.press(a, 20, Order::byTime), Press::repeated);
    keys.release(a, 25);
    EXPECT_EQ(keys.press(a, 30, Order::byTime), Press::first);
}

} // namespace
} // namespace glimmerly

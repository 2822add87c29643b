#include "platform/VirtualKeyCodes.h"

#include <gmock/gmock.h>

#include <linux/input-event-codes.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(VirtualKeyCodes, AnsiKeysAreWhereTheyAreOnEveryKeyboard) {
    const std::pair<std::int64_t, std::uint32_t> positions[] = {
        {virtual_key::ansiA, KEY_A},
        {virtual_key::escape, KEY_ESC},
        {virtual_key::returnKey, KEY_ENTER},
        {virtual_key::keypadEnter, KEY_KPENTER},
        {6, KEY_Z},
        {23, KEY_5},
        {22, KEY_6},
        {10, KEY_102ND},
        {117, KEY_DELETE},
        {90, KEY_F20},
        {91, KEY_KP8},
        {55, KEY_LEFTMETA},
    };
    for (const auto& [virtualKeyCode, evdevCode] : positions) {
        EXPECT_EQ(virtualKeyCodeFromEvdev(evdevCode), virtualKeyCode);
        EXPECT_EQ(virtualKeyCodeFromNativeScanCode(evdevCode + 8), virtualKeyCode);
        EXPECT_THAT(evdevCodesFromVirtualKeyCode(virtualKeyCode), ElementsAre(evdevCode));
    }
}

TEST(VirtualKeyCodes, EveryCodeOfAKeyLeadsBackToIt) {
    int keys = 0;
    for (std::int64_t virtualKeyCode = 0; virtualKeyCode < 128; ++virtualKeyCode) {
        for (const std::uint32_t evdevCode : evdevCodesFromVirtualKeyCode(virtualKeyCode)) {
            EXPECT_EQ(virtualKeyCodeFromEvdev(evdevCode), virtualKeyCode);
            ++keys;
        }
    }
    EXPECT_GT(keys, 110);
    EXPECT_THAT(evdevCodesFromVirtualKeyCode(105), ElementsAre(KEY_F13, KEY_SYSRQ)) << "on short keyboards";
}

TEST(VirtualKeyCodes, OtherNumbersNameNoKey) {
    for (const std::int64_t none : {-1L, 52L, 128L, 70000L})
        EXPECT_THAT(evdevCodesFromVirtualKeyCode(none), IsEmpty());
    EXPECT_EQ(virtualKeyCodeFromEvdev(KEY_MICMUTE), std::nullopt);
    EXPECT_EQ(virtualKeyCodeFromNativeScanCode(0), std::nullopt);
    EXPECT_EQ(virtualKeyCodeFromNativeScanCode(7), std::nullopt);
}

} // namespace
} // namespace glimmerly

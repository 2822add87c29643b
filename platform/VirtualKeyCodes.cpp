#include "platform/VirtualKeyCodes.h"

#include <linux/input-event-codes.h>

#include <algorithm>

namespace glimmerly {

namespace {

struct Position {
    std::int64_t virtualKeyCode;
    std::uint32_t evdevCode;
};

constexpr Position positions[] = {
    // Letters.
    {0, KEY_A},
    {1, KEY_S},
    {2, KEY_D},
    {3, KEY_F},
    {4, KEY_H},
    {5, KEY_G},
    {6, KEY_Z},
    {7, KEY_X},
    {8, KEY_C},
    {9, KEY_V},
    {11, KEY_B},
    {12, KEY_Q},
    {13, KEY_W},
    {14, KEY_E},
    {15, KEY_R},
    {16, KEY_Y},
    {17, KEY_T},
    {31, KEY_O},
    {32, KEY_U},
    {34, KEY_I},
    {35, KEY_P},
    {37, KEY_L},
    {38, KEY_J},
    {40, KEY_K},
    {45, KEY_N},
    {46, KEY_M},
    // Digits and punctuation.
    {18, KEY_1},
    {19, KEY_2},
    {20, KEY_3},
    {21, KEY_4},
    {23, KEY_5},
    {22, KEY_6},
    {26, KEY_7},
    {28, KEY_8},
    {25, KEY_9},
    {29, KEY_0},
    {10, KEY_102ND},
    {24, KEY_EQUAL},
    {27, KEY_MINUS},
    {30, KEY_RIGHTBRACE},
    {33, KEY_LEFTBRACE},
    {39, KEY_APOSTROPHE},
    {41, KEY_SEMICOLON},
    {42, KEY_BACKSLASH},
    {43, KEY_COMMA},
    {44, KEY_SLASH},
    {47, KEY_DOT},
    {50, KEY_GRAVE},
    {93, KEY_YEN},
    {94, KEY_RO},
    // Whitespace, editing and input methods.
    {36, KEY_ENTER},
    {48, KEY_TAB},
    {49, KEY_SPACE},
    {51, KEY_BACKSPACE},
    {53, KEY_ESC},
    {117, KEY_DELETE},
    {114, KEY_INSERT},
    {110, KEY_COMPOSE},
    {102, KEY_HANJA},
    {104, KEY_HANGEUL},
    // Modifiers.
    {54, KEY_RIGHTMETA},
    {55, KEY_LEFTMETA},
    {56, KEY_LEFTSHIFT},
    {57, KEY_CAPSLOCK},
    {58, KEY_LEFTALT},
    {59, KEY_LEFTCTRL},
    {60, KEY_RIGHTSHIFT},
    {61, KEY_RIGHTALT},
    {62, KEY_RIGHTCTRL},
    {63, KEY_FN},
    // Navigation.
    {115, KEY_HOME},
    {116, KEY_PAGEUP},
    {119, KEY_END},
    {121, KEY_PAGEDOWN},
    {123, KEY_LEFT},
    {124, KEY_RIGHT},
    {125, KEY_DOWN},
    {126, KEY_UP},
    // Function keys; the last three stand where a longer keyboard has F13 to F15.
    {122, KEY_F1},
    {120, KEY_F2},
    {99, KEY_F3},
    {118, KEY_F4},
    {96, KEY_F5},
    {97, KEY_F6},
    {98, KEY_F7},
    {100, KEY_F8},
    {101, KEY_F9},
    {109, KEY_F10},
    {103, KEY_F11},
    {111, KEY_F12},
    {105, KEY_F13},
    {107, KEY_F14},
    {113, KEY_F15},
    {106, KEY_F16},
    {64, KEY_F17},
    {79, KEY_F18},
    {80, KEY_F19},
    {90, KEY_F20},
    {105, KEY_SYSRQ},
    {107, KEY_SCROLLLOCK},
    {113, KEY_PAUSE},
    // Keypad; Clear stands where Num Lock does.
    {65, KEY_KPDOT},
    {67, KEY_KPASTERISK},
    {69, KEY_KPPLUS},
    {71, KEY_NUMLOCK},
    {75, KEY_KPSLASH},
    {76, KEY_KPENTER},
    {78, KEY_KPMINUS},
    {81, KEY_KPEQUAL},
    {82, KEY_KP0},
    {83, KEY_KP1},
    {84, KEY_KP2},
    {85, KEY_KP3},
    {86, KEY_KP4},
    {87, KEY_KP5},
    {88, KEY_KP6},
    {89, KEY_KP7},
    {91, KEY_KP8},
    {92, KEY_KP9},
    {95, KEY_KPCOMMA},
    {95, KEY_KPJPCOMMA},
    // Volume.
    {72, KEY_VOLUMEUP},
    {73, KEY_VOLUMEDOWN},
    {74, KEY_MUTE},
};

} // namespace

std::optional<std::int64_t> virtualKeyCodeFromEvdev(std::uint32_t evdevCode) {
    const auto* found = std::ranges::find(positions, evdevCode, &Position::evdevCode);
    if (found == std::end(positions))
        return {};
    return found->virtualKeyCode;
}

std::vector<std::uint32_t> evdevCodesFromVirtualKeyCode(std::int64_t virtualKeyCode) {
    std::vector<std::uint32_t> codes;
    for (const Position& position : positions) {
        if (position.virtualKeyCode == virtualKeyCode)
            codes.push_back(position.evdevCode);
    }
    return codes;
}

std::optional<std::int64_t> virtualKeyCodeFromNativeScanCode(std::uint32_t scanCode) {
    if (scanCode < firstXKeycode)
        return {};
    return virtualKeyCodeFromEvdev(scanCode - firstXKeycode);
}

} // namespace glimmerly

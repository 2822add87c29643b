#include "platform/HotkeyService.h"
#include "platform/KeyboardLayout.h"
#include "platform/VirtualKeyCodes.h"
#include "platform/shortcuts/KeyStroke.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <string>

namespace glimmerly {

namespace {

struct NamedKey {
    xkb_keysym_t symbol;
    std::int32_t virtualKeyCode;
    std::uint32_t carbonFlags = 0; ///< with which the key has the symbol
};

/// The keys that have the same symbols on every layout.
constexpr NamedKey namedKeys[] = {
    // Whitespace, editing and input methods.
    {XKB_KEY_Tab, 48},
    {XKB_KEY_ISO_Left_Tab, 48, hotkey_modifier::shift},
    {XKB_KEY_Return, 36},
    {XKB_KEY_space, 49},
    {XKB_KEY_BackSpace, 51},
    {XKB_KEY_Delete, 117},
    {XKB_KEY_Insert, 114},
    {XKB_KEY_Escape, 53},
    {XKB_KEY_Menu, 110},
    {XKB_KEY_Hangul, 104},
    {XKB_KEY_Hangul_Hanja, 102},
    // Navigation.
    {XKB_KEY_Home, 115},
    {XKB_KEY_End, 119},
    {XKB_KEY_Prior, 116},
    {XKB_KEY_Next, 121},
    {XKB_KEY_Left, 123},
    {XKB_KEY_Right, 124},
    {XKB_KEY_Down, 125},
    {XKB_KEY_Up, 126},
    // Function keys, and what stands in for some of them.
    {XKB_KEY_F1, 122},
    {XKB_KEY_F2, 120},
    {XKB_KEY_F3, 99},
    {XKB_KEY_F4, 118},
    {XKB_KEY_F5, 96},
    {XKB_KEY_F6, 97},
    {XKB_KEY_F7, 98},
    {XKB_KEY_F8, 100},
    {XKB_KEY_F9, 101},
    {XKB_KEY_F10, 109},
    {XKB_KEY_F11, 103},
    {XKB_KEY_F12, 111},
    {XKB_KEY_F13, 105},
    {XKB_KEY_F14, 107},
    {XKB_KEY_F15, 113},
    {XKB_KEY_F16, 106},
    {XKB_KEY_F17, 64},
    {XKB_KEY_F18, 79},
    {XKB_KEY_F19, 80},
    {XKB_KEY_F20, 90},
    {XKB_KEY_Print, 105},
    {XKB_KEY_Sys_Req, 105},
    {XKB_KEY_Scroll_Lock, 107},
    {XKB_KEY_Pause, 113},
    {XKB_KEY_Break, 113},
    // Keypad, with and without Num Lock.
    {XKB_KEY_Num_Lock, 71},
    {XKB_KEY_KP_Enter, 76},
    {XKB_KEY_KP_Add, 69},
    {XKB_KEY_KP_Subtract, 78},
    {XKB_KEY_KP_Multiply, 67},
    {XKB_KEY_KP_Divide, 75},
    {XKB_KEY_KP_Equal, 81},
    {XKB_KEY_KP_Decimal, 65},
    {XKB_KEY_KP_Separator, 65},
    {XKB_KEY_KP_Separator, 95}, // of keypads with both
    {XKB_KEY_KP_Delete, 65},
    {XKB_KEY_KP_0, 82},
    {XKB_KEY_KP_Insert, 82},
    {XKB_KEY_KP_1, 83},
    {XKB_KEY_KP_End, 83},
    {XKB_KEY_KP_2, 84},
    {XKB_KEY_KP_Down, 84},
    {XKB_KEY_KP_3, 85},
    {XKB_KEY_KP_Next, 85},
    {XKB_KEY_KP_4, 86},
    {XKB_KEY_KP_Left, 86},
    {XKB_KEY_KP_5, 87},
    {XKB_KEY_KP_Begin, 87},
    {XKB_KEY_KP_6, 88},
    {XKB_KEY_KP_Right, 88},
    {XKB_KEY_KP_7, 89},
    {XKB_KEY_KP_Home, 89},
    {XKB_KEY_KP_8, 91},
    {XKB_KEY_KP_Up, 91},
    {XKB_KEY_KP_9, 92},
    {XKB_KEY_KP_Prior, 92},
    // Volume.
    {XKB_KEY_XF86AudioRaiseVolume, 72},
    {XKB_KEY_XF86AudioLowerVolume, 73},
    {XKB_KEY_XF86AudioMute, 74},
};

constexpr std::int64_t largestVirtualKeyCode = 127;
/// Of the keys 0 to 9 above the letters.
constexpr std::int64_t digitRow[] = {29, 18, 19, 20, 21, 23, 22, 26, 28, 25};

std::string printed(xkb_keysym_t symbol) {
    char utf8[8] = {};
    xkb_keysym_to_utf8(symbol, utf8, sizeof utf8);
    return utf8;
}

using TextOfKey = std::optional<std::string> (KeyboardLayout::*)(std::int64_t) const;

std::vector<std::int64_t> keysThatPrint(const std::string& text, const KeyboardLayout& layout,
                                        TextOfKey textOfKey) {
    std::vector<std::int64_t> codes;
    for (std::int64_t code = 0; code <= largestVirtualKeyCode; ++code) {
        const bool isNamed = std::ranges::count(namedKeys, code, &NamedKey::virtualKeyCode) > 0;
        if (!isNamed && (layout.*textOfKey)(code) == text)
            codes.push_back(code);
    }
    return codes;
}

/// Keys that are a symbol together with these modifiers.
struct Places {
    std::vector<std::int64_t> codes;
    std::uint32_t carbonFlags = 0;
};

Places placesOf(xkb_keysym_t symbol, const KeyboardLayout& layout) {
    const std::string text = printed(symbol);
    if (text.empty())
        return {};
    if (auto plain = keysThatPrint(text, layout, &KeyboardLayout::translate); !plain.empty())
        return {std::move(plain)};
    // Some layouts print digits only together with Shift; desktops mean the key all the same.
    if (symbol >= XKB_KEY_0 && symbol <= XKB_KEY_9)
        return {{digitRow[symbol - XKB_KEY_0]}};
    return {keysThatPrint(text, layout, &KeyboardLayout::translateShifted), hotkey_modifier::shift};
}

Places placesOf(const KeyStroke& keys, const KeyboardLayout& layout) {
    if (keys.keycode != 0) {
        const auto code = virtualKeyCodeFromNativeScanCode(keys.keycode);
        return code ? Places{{*code}} : Places{};
    }
    Places named;
    for (const auto& [symbol, code, carbonFlags] : namedKeys) {
        if (symbol == keys.symbol) {
            named.codes.push_back(code);
            named.carbonFlags = carbonFlags;
        }
    }
    return named.codes.empty() ? placesOf(keys.symbol, layout) : named;
}

} // namespace

std::vector<SymbolicHotKey> symbolicHotKeysOf(const DesktopShortcut& shortcut, const KeyboardLayout& layout) {
    const Places places = placesOf(shortcut.keys, layout);
    std::vector<SymbolicHotKey> hotKeys;
    std::uint32_t carbonFlags = shortcut.keys.carbonFlags;
    if (shortcut.keys.shift == ShiftOfSymbol::implied)
        carbonFlags |= places.carbonFlags;
    for (const std::int64_t code : places.codes)
        hotKeys.push_back({shortcut.isEnabled, code, carbonFlags});
    return hotKeys;
}

} // namespace glimmerly

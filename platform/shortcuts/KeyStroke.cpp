#include "platform/shortcuts/KeyStroke.h"

#include "platform/HotkeyService.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <string>

namespace glimmerly {

namespace {

constexpr std::string_view numberPrefix = "0x";
/// Of the X protocol.
constexpr std::uint32_t smallestKeycode = 8, largestKeycode = 255;
constexpr std::size_t longestName = 64;
/// GNOME's name for the key above Tab, whatever it prints.
constexpr std::string_view aboveTab = "Above_Tab";
constexpr std::uint32_t aboveTabKeycode = 49;

struct ModifierName {
    std::string_view name; ///< in lower case
    std::uint32_t carbonFlag;
};
constexpr ModifierName gtkModifiers[] = {
    {"primary", hotkey_modifier::control}, {"control", hotkey_modifier::control},
    {"ctrl", hotkey_modifier::control},    {"ctl", hotkey_modifier::control},
    {"alt", hotkey_modifier::option},      {"mod1", hotkey_modifier::option},
    {"meta", hotkey_modifier::option},     {"shift", hotkey_modifier::shift},
    {"shft", hotkey_modifier::shift},      {"super", hotkey_modifier::command},
    {"mod4", hotkey_modifier::command},
};

std::optional<std::uint32_t> keycodeNumbered(std::string_view hexadecimal) {
    std::uint32_t number = 0;
    const char* const start = std::to_address(hexadecimal.begin());
    const char* const end = std::to_address(hexadecimal.end());
    const auto read = std::from_chars(start, end, number, 16);
    if (read.ec != std::errc() || read.ptr != end || number < smallestKeycode || number > largestKeycode)
        return {};
    return number;
}

} // namespace

std::string lowerCase(std::string_view ascii) {
    std::string lower(ascii);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

std::optional<KeyStroke> keyStrokeNamed(std::string_view name, std::uint32_t carbonFlags) {
    if (name.size() > longestName)
        return {};
    if (name == aboveTab)
        return KeyStroke{.keycode = aboveTabKeycode, .carbonFlags = carbonFlags};
    if (name.starts_with(numberPrefix)) {
        const auto keycode = keycodeNumbered(name.substr(numberPrefix.size()));
        return keycode.transform(
            [&](std::uint32_t number) { return KeyStroke{.keycode = number, .carbonFlags = carbonFlags}; });
    }
    const std::string terminated(name);
    xkb_keysym_t symbol = xkb_keysym_from_name(terminated.c_str(), XKB_KEYSYM_NO_FLAGS);
    if (symbol == XKB_KEY_NoSymbol)
        symbol = xkb_keysym_from_name(terminated.c_str(), XKB_KEYSYM_CASE_INSENSITIVE);
    if (symbol == XKB_KEY_NoSymbol)
        return {};
    return KeyStroke{.symbol = xkb_keysym_to_lower(symbol), .carbonFlags = carbonFlags};
}

std::optional<KeyStroke> parseGtkAccelerator(std::string_view text) {
    std::uint32_t carbonFlags = 0;
    while (text.starts_with('<')) {
        const std::size_t end = text.find('>');
        if (end == std::string_view::npos)
            return {};
        const std::string name = lowerCase(text.substr(1, end - 1));
        const auto* found = std::ranges::find(gtkModifiers, name, &ModifierName::name);
        if (found == std::end(gtkModifiers))
            return {};
        carbonFlags |= found->carbonFlag;
        text.remove_prefix(end + 1);
    }
    return keyStrokeNamed(text, carbonFlags);
}

} // namespace glimmerly

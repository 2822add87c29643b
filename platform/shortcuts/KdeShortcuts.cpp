#include "platform/shortcuts/KdeShortcuts.h"

#include "platform/HotkeyService.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <string>

namespace glimmerly {

namespace {

struct ModifierName {
    std::string_view name;
    std::uint32_t carbonFlag;
};
constexpr ModifierName modifierNames[] = {
    {"Ctrl", hotkey_modifier::control},
    {"Alt", hotkey_modifier::option},
    {"Shift", hotkey_modifier::shift},
    {"Meta", hotkey_modifier::command},
};
constexpr std::string_view keypad = "Num";

/// Where this desktop's name of a key is not the symbol's own.
struct KeyName {
    std::string_view name;
    std::string_view symbolName;
};
constexpr KeyName keyNames[] = {
    {"Esc", "Escape"},
    {"Backtab", "ISO_Left_Tab"},
    {"Backspace", "BackSpace"},
    {"Enter", "KP_Enter"},
    {"Ins", "Insert"},
    {"Del", "Delete"},
    {"PgUp", "Prior"},
    {"PgDown", "Next"},
    {"SysReq", "Sys_Req"},
    {"NumLock", "Num_Lock"},
    {"ScrollLock", "Scroll_Lock"},
    {"Space", "space"},
    {"Volume Up", "XF86AudioRaiseVolume"},
    {"Volume Down", "XF86AudioLowerVolume"},
    {"Volume Mute", "XF86AudioMute"},
};
constexpr KeyName keypadNames[] = {
    {"+", "KP_Add"},    {"-", "KP_Subtract"}, {"*", "KP_Multiply"},
    {"/", "KP_Divide"}, {".", "KP_Decimal"},  {"=", "KP_Equal"},
};

template <std::size_t count>
std::optional<std::string_view> symbolNameIn(const KeyName (&names)[count], std::string_view name) {
    const auto* found = std::ranges::find(names, name, &KeyName::name);
    return found == std::end(names) ? std::nullopt : std::optional(found->symbolName);
}

/// The one character that `utf8` is, else 0.
std::uint32_t onlyCharacter(std::string_view utf8) {
    const auto byte = [&](std::size_t index) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(utf8[index]));
    };
    if (utf8.size() == 1 && byte(0) < 0x80)
        return byte(0);
    if (utf8.size() == 2 && byte(0) >> 5 == 6)
        return (byte(0) & 0x1F) << 6 | (byte(1) & 0x3F);
    if (utf8.size() == 3 && byte(0) >> 4 == 14)
        return (byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
    return 0;
}

enum class KeyPlace { anywhere, onKeypad };

std::optional<KeyStroke> keyNamed(std::string_view name, KeyPlace place, std::uint32_t carbonFlags) {
    if (place == KeyPlace::onKeypad) {
        const auto symbolName = symbolNameIn(keypadNames, name);
        const std::string digit = "KP_" + std::string(name.substr(0, 8));
        return keyStrokeNamed(symbolName.value_or(digit), carbonFlags);
    }
    if (const std::uint32_t character = onlyCharacter(name)) {
        const xkb_keysym_t symbol = xkb_keysym_to_lower(xkb_utf32_to_keysym(character));
        return symbol == XKB_KEY_NoSymbol
                   ? std::nullopt
                   : std::optional(KeyStroke{.symbol = symbol, .carbonFlags = carbonFlags});
    }
    return keyStrokeNamed(symbolNameIn(keyNames, name).value_or(name), carbonFlags);
}

/// "Meta+Ctrl+Esc", "Meta++"; none for what is no key.
std::optional<KeyStroke> parseShortcut(std::string_view text) {
    std::uint32_t carbonFlags = 0;
    KeyPlace place = KeyPlace::anywhere;
    for (std::size_t plus = text.find('+');
         plus != std::string_view::npos && plus != 0 && plus + 1 < text.size(); plus = text.find('+')) {
        const std::string_view name = text.substr(0, plus);
        const auto* found = std::ranges::find(modifierNames, name, &ModifierName::name);
        if (found != std::end(modifierNames))
            carbonFlags |= found->carbonFlag;
        else if (name == keypad)
            place = KeyPlace::onKeypad;
        else
            return {};
        text.remove_prefix(plus + 1);
    }
    auto keys = keyNamed(text, place, carbonFlags);
    if (keys)
        keys->shift = ShiftOfSymbol::implied;
    return keys;
}

/// `text` with the escapes of a value undone: first those of every value, then, in a list, those of its
/// items.
std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            plain += text[i];
            continue;
        }
        const char escaped = text[++i];
        if (escaped == 't')
            plain += '\t';
        else if (escaped == 'n')
            plain += '\n';
        else if (escaped == 's')
            plain += ' ';
        else if (escaped == '\\')
            plain += '\\';
        else
            (plain += '\\') += escaped;
    }
    return plain;
}

std::vector<std::string> listItems(std::string_view list) {
    std::vector<std::string> items(1);
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i] == '\\' && i + 1 < list.size())
            items.back() += list[++i];
        else if (list[i] == ',')
            items.emplace_back();
        else
            items.back() += list[i];
    }
    return items;
}

std::vector<KeyStroke> parseAlternatives(std::string_view text) {
    std::vector<KeyStroke> all;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\t'), text.size());
        if (const auto keys = parseShortcut(text.substr(0, end)))
            all.push_back(*keys);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return all;
}

void addEntry(std::string_view value, std::vector<DesktopShortcut>& shortcuts) {
    const auto items = listItems(unescaped(value)); // what is set, what it is by default, the action's title
    const auto own = parseAlternatives(items[0]);
    for (const KeyStroke& keys : own)
        shortcuts.push_back({keys});
    if (!own.empty() || items.size() < 2)
        return;
    for (const KeyStroke& keys : parseAlternatives(items[1]))
        shortcuts.push_back({keys, false});
}

} // namespace

std::vector<DesktopShortcut> kdeShortcuts(std::string_view configuration) {
    std::vector<DesktopShortcut> shortcuts;
    while (!configuration.empty()) {
        const std::size_t end = std::min(configuration.find('\n'), configuration.size());
        std::string_view line = configuration.substr(0, end);
        configuration.remove_prefix(std::min(end + 1, configuration.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        const std::size_t equals = line.find('=');
        if (line.starts_with('[') || line.starts_with('#') || equals == std::string_view::npos)
            continue;
        // The first value names the group that the entries belong to.
        if (line.starts_with("_k_friendly_name"))
            continue;
        addEntry(line.substr(equals + 1), shortcuts);
    }
    return shortcuts;
}

} // namespace glimmerly

#include "platform/shortcuts/OpenboxShortcuts.h"

#include "platform/HotkeyService.h"
#include "platform/shortcuts/XmlElements.h"

#include <algorithm>
#include <string>

namespace glimmerly {

namespace {

struct ModifierName {
    std::string_view name; ///< in lower case
    std::uint32_t carbonFlag;
};
constexpr ModifierName modifierNames[] = {
    {"c", hotkey_modifier::control},     {"control", hotkey_modifier::control},
    {"a", hotkey_modifier::option},      {"alt", hotkey_modifier::option},
    {"mod1", hotkey_modifier::option},   {"m", hotkey_modifier::option},
    {"meta", hotkey_modifier::option},   {"s", hotkey_modifier::shift},
    {"shift", hotkey_modifier::shift},   {"w", hotkey_modifier::command},
    {"super", hotkey_modifier::command}, {"mod4", hotkey_modifier::command},
};

/// "W-A-Tab"; none for what is no key with modifiers that a hotkey can have.
std::optional<KeyStroke> parseKey(std::string_view text) {
    std::uint32_t carbonFlags = 0;
    for (std::size_t dash = text.find('-'); dash != std::string_view::npos; dash = text.find('-')) {
        const auto* found =
            std::ranges::find(modifierNames, lowerCase(text.substr(0, dash)), &ModifierName::name);
        if (found == std::end(modifierNames))
            return {};
        carbonFlags |= found->carbonFlag;
        text.remove_prefix(dash + 1);
    }
    return keyStrokeNamed(text, carbonFlags);
}

std::string_view firstOfChain(std::string_view chain) {
    constexpr auto space = " \t\r\n";
    const std::size_t start = std::min(chain.find_first_not_of(space), chain.size());
    return chain.substr(start, chain.find_first_of(space, start) - start);
}

} // namespace

std::vector<DesktopShortcut> openboxShortcuts(std::string_view rcXml) {
    std::vector<DesktopShortcut> shortcuts;
    int bindingsAround = 0;
    readXmlElements(
        rcXml,
        [&](const XmlElement& element) {
            if (element.name != "keybind" || bindingsAround++ > 0)
                return;
            const std::string chain = element.attribute("key");
            if (const auto keys = parseKey(firstOfChain(chain)))
                shortcuts.push_back({*keys});
        },
        [&](const std::string& name) { bindingsAround -= name == "keybind"; });
    return shortcuts;
}

} // namespace glimmerly

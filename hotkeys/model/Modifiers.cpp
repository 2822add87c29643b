#include "hotkeys/model/Modifiers.h"

#include "platform/HotkeyService.h"
#include "platform/LocalEvents.h"

#include <string_view>

namespace glimmerly {

namespace {

struct ModifierKey {
    Modifiers modifier;
    std::string_view glyph;
    std::uint64_t eventFlag;
    std::uint32_t carbonFlag;
};

/// In the order in which the glyphs are shown.
constexpr ModifierKey modifierKeys[] = {
    {Modifiers::control, "\u2303", event_modifier::control, hotkey_modifier::control},
    {Modifiers::option, "\u2325", event_modifier::option, hotkey_modifier::option},
    {Modifiers::shift, "\u21E7", event_modifier::shift, hotkey_modifier::shift},
    {Modifiers::command, "\u2318", event_modifier::command, hotkey_modifier::command},
};

} // namespace

Modifiers Modifiers::fromEventModifierFlags(std::uint64_t flags) {
    Modifiers result;
    for (const ModifierKey& key : modifierKeys) {
        if (flags & key.eventFlag)
            result = result | key.modifier;
    }
    return result;
}

Modifiers Modifiers::fromCarbonFlags(std::uint32_t flags) {
    Modifiers result;
    for (const ModifierKey& key : modifierKeys) {
        if (flags & key.carbonFlag)
            result = result | key.modifier;
    }
    return result;
}

std::uint64_t Modifiers::eventModifierFlags() const {
    std::uint64_t flags = 0;
    for (const ModifierKey& key : modifierKeys) {
        if (contains(key.modifier))
            flags |= key.eventFlag;
    }
    return flags;
}

std::uint32_t Modifiers::carbonFlags() const {
    std::uint32_t flags = 0;
    for (const ModifierKey& key : modifierKeys) {
        if (contains(key.modifier))
            flags |= key.carbonFlag;
    }
    return flags;
}

std::string Modifiers::glyphString() const {
    std::string glyphs;
    for (const ModifierKey& key : modifierKeys) {
        if (contains(key.modifier))
            glyphs += key.glyph;
    }
    return glyphs;
}

} // namespace glimmerly

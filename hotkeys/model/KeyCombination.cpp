#include "hotkeys/model/KeyCombination.h"

#include "hotkeys/model/UnicodeText.h"
#include "platform/KeyboardLayout.h"

namespace glimmerly {

std::string KeyCombination::displayString(const KeyboardLayout& layout) const {
    return modifiers.glyphString() + " " + capitalized(keyDisplayName(key, layout));
}

KeyEquivalent menuKeyEquivalent(KeyCode key, Modifiers modifiers, const KeyboardLayout& layout) {
    const std::string printed = layout.translate(key.rawValue).value_or("");
    return {characterCount(printed) == 1 ? lowercased(printed) : "", modifiers.eventModifierFlags()};
}

} // namespace glimmerly

std::size_t std::hash<glimmerly::KeyCombination>::operator()(
    const glimmerly::KeyCombination& combination) const noexcept {
    const std::size_t key = std::hash<glimmerly::KeyCode>()(combination.key);
    const std::size_t modifiers = std::hash<glimmerly::Modifiers>()(combination.modifiers);
    return key * 31 + modifiers;
}

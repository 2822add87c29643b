#pragma once

#include "base/Result.h"
#include "hotkeys/model/KeyCode.h"
#include "hotkeys/model/Modifiers.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace glimmerly {

/// One key pressed together with modifier keys.
struct KeyCombination {
    KeyCode key;
    Modifiers modifiers;

    constexpr bool operator==(const KeyCombination&) const = default;

    /// The text (UTF-8) that shows it to the user on `layout`: glyphs, a space, the key's capitalised name.
    [[nodiscard]] std::string displayString(const KeyboardLayout& layout) const;

    /// The stored form: the JSON array [key code, modifiers] without spaces.
    [[nodiscard]] std::string encoded() const;
    /// Reads the stored form; a `DecodingError` tells what is wrong with it. Neither number's range is
    /// checked.
    [[nodiscard]] static Result<KeyCombination> decode(std::string_view json);
};

enum class DecodingError { typeMismatch, dataCorrupted };

/// What a menu item shows beside its title and answers to.
struct KeyEquivalent {
    std::string character;          ///< one lower-case character (UTF-8), or empty: no key is shown
    std::uint64_t modifierMask = 0; ///< event flags, as of `Modifiers::eventModifierFlags`

    bool operator==(const KeyEquivalent&) const = default;
};

/// A menu item's key equivalent for `key` with `modifiers` on `layout`. Keys that print nothing have none;
/// those that type a control character, as Return does, have that one.
[[nodiscard]] KeyEquivalent menuKeyEquivalent(KeyCode key, Modifiers modifiers, const KeyboardLayout& layout);

} // namespace glimmerly

template <>
struct std::hash<glimmerly::KeyCombination> {
    std::size_t operator()(const glimmerly::KeyCombination& combination) const noexcept;
};

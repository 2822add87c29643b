#pragma once

#include "platform/SymbolicHotKeys.h"

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glimmerly {

class KeyboardLayout;

/// Whether a shortcut with a symbol that takes Shift names Shift beside it.
enum class ShiftOfSymbol {
    named,   ///< if it is to be held: the modifiers are meant as they are written
    implied, ///< never: whoever types the symbol holds it
};

/// A key with modifiers as the settings of a desktop name it.
struct KeyStroke {
    xkb_keysym_t symbol = XKB_KEY_NoSymbol;
    std::uint32_t keycode = 0; ///< X keycode of a key that is named by it and not by its symbol
    std::uint32_t carbonFlags = 0;
    ShiftOfSymbol shift = ShiftOfSymbol::named;

    bool operator==(const KeyStroke&) const = default;
};

/// One of the desktop's shortcuts; a user can switch them off.
struct DesktopShortcut {
    KeyStroke keys;
    bool isEnabled = true;

    bool operator==(const DesktopShortcut&) const = default;
};

/// `ascii` with its letters in lower case.
[[nodiscard]] std::string lowerCase(std::string_view ascii);

/// The key with the symbol's name `name` ("Print", "l"), or its number ("0x43"), with these modifiers; none
/// for a name that is not known.
[[nodiscard]] std::optional<KeyStroke> keyStrokeNamed(std::string_view name, std::uint32_t carbonFlags);

/// A shortcut as GTK writes it: "<Primary><Alt>Delete". None when it is not one, or when it has modifiers
/// that no hotkey has.
[[nodiscard]] std::optional<KeyStroke> parseGtkAccelerator(std::string_view text);

/// What to press on `layout` for `shortcut`: each of the keys that have its symbol, or where none has, those
/// that have it with Shift; empty for none.
[[nodiscard]] std::vector<SymbolicHotKey> symbolicHotKeysOf(const DesktopShortcut& shortcut,
                                                            const KeyboardLayout& layout);

} // namespace glimmerly

#include "hotkeys/SystemReservedShortcuts.h"

#include "platform/SymbolicHotKeys.h"

#include <algorithm>

namespace glimmerly {

bool isSystemReserved(KeyCode key, Modifiers modifiers, const SymbolicHotKeys& symbolicHotKeys) {
    return std::ranges::any_of(symbolicHotKeys.copySymbolicHotKeys(), [&](const SymbolicHotKey& entry) {
        return entry.isEnabled && entry.keyCode == key.rawValue &&
               Modifiers::fromCarbonFlags(entry.carbonFlags) == modifiers;
    });
}

} // namespace glimmerly

#pragma once

#include "hotkeys/model/KeyCombination.h"

namespace glimmerly {

class SymbolicHotKeys;

/// Whether the desktop keeps `key` with exactly `modifiers` for itself. Asks `symbolicHotKeys` afresh.
[[nodiscard]] bool isSystemReserved(KeyCode key, Modifiers modifiers, const SymbolicHotKeys& symbolicHotKeys);

} // namespace glimmerly

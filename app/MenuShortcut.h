#pragma once

#include "hotkeys/model/KeyCombination.h"

#include <QKeySequence>

namespace glimmerly {

/// `equivalent` as a menu of this desktop shows it, with Command as the Super key and Option as Alt; empty
/// when it has no character.
[[nodiscard]] QKeySequence menuShortcut(const KeyEquivalent& equivalent);

} // namespace glimmerly

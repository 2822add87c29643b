#pragma once

#include "base/Observers.h"

#include <cstdint>
#include <optional>
#include <string>

namespace glimmerly {

/// What the keys of the current ASCII-capable keyboard layout print: the current layout's, or while that one
/// prints another script, those of a Latin layout beside it.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;

    /// The text (UTF-8) of the key at virtual key code `keyCode` without modifiers, at most 4 UTF-16 code
    /// units long; none when there is no layout or the layout has nothing there. Main thread only.
    [[nodiscard]] virtual std::optional<std::string> translate(std::int64_t keyCode) const = 0;

    /// The same for the key with Shift.
    [[nodiscard]] virtual std::optional<std::string> translateShifted(std::int64_t keyCode) const = 0;

    /// `observer` runs on the main thread after each change of the layout.
    [[nodiscard]] virtual Observation observe(std::function<void()> observer) = 0;
};

} // namespace glimmerly

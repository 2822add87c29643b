#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace glimmerly {

/// What the keys of the current keyboard layout print.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;

    /// The text of the key at virtual key code `keyCode` without modifiers, at most 4 UTF-16 code units;
    /// none when there is no layout or the layout has nothing there.
    [[nodiscard]] virtual std::optional<std::u16string> translate(std::int64_t keyCode) const = 0;

    /// `handler` runs on the main thread after each change of the layout, for the life of the process.
    virtual void onChange(std::function<void()> handler) = 0;
};

} // namespace glimmerly

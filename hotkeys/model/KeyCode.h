#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>

namespace glimmerly {

class KeyboardLayout;

/// A virtual key code: the position of a key, whatever the layout prints on it.
struct KeyCode {
    std::int64_t rawValue = 0;

    constexpr bool operator==(const KeyCode&) const = default;
};

} // namespace glimmerly

template <>
struct std::hash<glimmerly::KeyCode> {
    std::size_t operator()(glimmerly::KeyCode key) const noexcept {
        return std::hash<std::int64_t>()(key.rawValue);
    }
};

namespace glimmerly {

/// The names (UTF-8) of the keys that are called the same on every layout.
[[nodiscard]] const std::unordered_map<KeyCode, std::string>& specialKeyNames();

/// The key's name (UTF-8) for a person: its special name, else what `layout` prints on it; empty when the
/// layout prints nothing there.
[[nodiscard]] std::string keyDisplayName(KeyCode key, const KeyboardLayout& layout);

} // namespace glimmerly

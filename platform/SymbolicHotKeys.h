#pragma once

#include <cstdint>
#include <vector>

namespace glimmerly {

/// A keyboard shortcut that the desktop keeps for itself.
struct SymbolicHotKey {
    bool isEnabled = false;        ///< false: the user has switched it off
    std::int64_t keyCode = 0;      ///< virtual key code
    std::uint32_t carbonFlags = 0; ///< the hotkey service's modifier flags

    bool operator==(const SymbolicHotKey&) const = default;
};

/// The shortcuts of the desktop that runs.
class SymbolicHotKeys {
public:
    virtual ~SymbolicHotKeys() = default;

    /// As they are set now. Empty where the desktop is unknown or they cannot be read. Main thread only.
    [[nodiscard]] virtual std::vector<SymbolicHotKey> copySymbolicHotKeys() const = 0;
};

} // namespace glimmerly

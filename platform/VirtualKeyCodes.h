#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace glimmerly {

/// The virtual key codes that the program itself looks for. A virtual key code names a key by its position,
/// whatever the layout prints on it.
namespace virtual_key {
inline constexpr std::int64_t ansiA = 0;
inline constexpr std::int64_t ansiZ = 6;
inline constexpr std::int64_t returnKey = 36;
inline constexpr std::int64_t escape = 53;
inline constexpr std::int64_t firstModifier = 54; ///< the modifier keys have the numbers from here
inline constexpr std::int64_t lastModifier = 63;
inline constexpr std::int64_t keypadEnter = 76;
} // namespace virtual_key

/// The virtual key code of the key that the kernel reports as `evdevCode` (a KEY_ number of linux/input);
/// none for a key that has no virtual key code.
[[nodiscard]] std::optional<std::int64_t> virtualKeyCodeFromEvdev(std::uint32_t evdevCode);

/// The keys that are `virtualKeyCode`, the usual one first: Print Screen, for one, is the F13 of keyboards
/// without an F13. Empty for a number that names no key.
[[nodiscard]] std::vector<std::uint32_t> evdevCodesFromVirtualKeyCode(std::int64_t virtualKeyCode);

/// The same for a Qt key event's `nativeScanCode()`, which is an X keycode (evdev code + 8) on X11 and
/// Wayland alike.
[[nodiscard]] std::optional<std::int64_t> virtualKeyCodeFromNativeScanCode(std::uint32_t scanCode);

/// The X keycode of evdev code 0.
inline constexpr std::uint32_t firstXKeycode = 8;

} // namespace glimmerly

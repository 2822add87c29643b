#pragma once

/// What the hotkey recorder says, UTF-8.
namespace glimmerly::hotkey_recorder_text {

inline constexpr auto typeHotkey = "Type Hotkey";
inline constexpr auto recordHotkey = "Record Hotkey";
inline constexpr auto cancel = "Cancel";
inline constexpr auto record = "Record";
inline constexpr auto clear = "Clear";
inline constexpr auto reservedTitle = "Hotkey is reserved by macOS";

} // namespace glimmerly::hotkey_recorder_text

#pragma once

/// What several windows say, UTF-8.
namespace glimmerly::common_text {

inline constexpr auto takeScreenshot = "Take screenshot";
inline constexpr auto screenRecording = "Screen Recording";
inline constexpr auto openSystemSettings = "Open System Settings…";
inline constexpr auto ok = "OK";

} // namespace glimmerly::common_text

#pragma once

#include <string_view>

/// One category per area of the program that has something to log.
namespace glimmerly::log_category {

inline constexpr std::string_view appLifecycle = "AppLifecycle";
inline constexpr std::string_view logging = "Logging";
inline constexpr std::string_view statusMenu = "StatusMenu";
inline constexpr std::string_view screenshotWorkflow = "ScreenshotWorkflow";
inline constexpr std::string_view screenCapture = "ScreenCapture";
inline constexpr std::string_view screenRecordingPermission = "ScreenRecordingPermission";
inline constexpr std::string_view overlay = "Overlay";
inline constexpr std::string_view overlayCaptureBacking = "OverlayCaptureBacking";
inline constexpr std::string_view overlayCanvas = "OverlayCanvas";
inline constexpr std::string_view overlayExport = "OverlayExport";
inline constexpr std::string_view hotkeySettings = "HotkeySettings";
inline constexpr std::string_view hotkey = "Hotkey";
inline constexpr std::string_view hotkeyRecorder = "HotkeyRecorder";
inline constexpr std::string_view telemetry = "Telemetry";
inline constexpr std::string_view bugReport = "BugReport";
inline constexpr std::string_view updates = "Updates";

} // namespace glimmerly::log_category

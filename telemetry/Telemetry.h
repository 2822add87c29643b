#pragma once

#include "telemetry/TelemetryValue.h"

#include <string_view>

namespace glimmerly {

/// Records usage events. Called from any thread; returns at once and never fails.
class Telemetry {
public:
    virtual ~Telemetry() = default;

    /// `name` is one of `telemetry_event`.
    virtual void track(std::string_view name, TelemetryProperties properties = {}) = 0;
};

/// Every event there is.
namespace telemetry_event {

inline constexpr std::string_view appLaunch = "app_launch";
inline constexpr std::string_view statusMenuOpenSettings = "status_menu_open_settings";
inline constexpr std::string_view statusMenuCheckForUpdates = "status_menu_check_for_updates";
inline constexpr std::string_view statusMenuQuit = "status_menu_quit";
inline constexpr std::string_view captureRequested = "capture_requested";
inline constexpr std::string_view captureStarted = "capture_started";
inline constexpr std::string_view captureSucceeded = "capture_succeeded";
inline constexpr std::string_view captureFailed = "capture_failed";
inline constexpr std::string_view permissionOnboardingShown = "permission_onboarding_shown";
inline constexpr std::string_view permissionOnboardingDismissed = "permission_onboarding_dismissed";
inline constexpr std::string_view permissionOpenSystemSettings = "permission_open_system_settings";
inline constexpr std::string_view overlayOpened = "overlay_opened";
inline constexpr std::string_view overlayDismissed = "overlay_dismissed";

} // namespace telemetry_event

} // namespace glimmerly

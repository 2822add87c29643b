#pragma once

#include <array>

/// What the onboarding window says, UTF-8.
namespace glimmerly::onboarding_text {

inline constexpr auto windowTitle = "Permissions";
inline constexpr auto title = "Screen Recording";
inline constexpr auto purpose =
    "Glimmerly needs this to capture your display and show it in the annotation overlay.";
inline constexpr auto stepsCaption = "How to enable";
inline constexpr std::array steps{
    "Open System Settings → Privacy & Security → Screen Recording.",
    "Turn on the switch for Glimmerly.",
    "Choose Quit & Reopen below if macOS asks you to quit Glimmerly, then press Continue.",
};
inline constexpr auto baseDetail =
    "After you enable access, return here and choose Continue. If permission still isn't detected, choose "
    "Quit & Reopen below.";
/// After the base, once Continue was chosen without the permission.
inline constexpr auto stillOff =
    "\n\nScreen Recording is still off. Turn on Glimmerly in System Settings, then press Continue. If it "
    "doesn't work, please press \"Quit & Reopen\" to refresh permissions.";
inline constexpr auto openSystemSettings = "Open System Settings…";
inline constexpr auto permissionGranted = "Permission granted";
inline constexpr auto quitAndReopen = "Quit & Reopen";
inline constexpr auto continueTitle = "Continue";

} // namespace glimmerly::onboarding_text

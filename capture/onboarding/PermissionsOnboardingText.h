#pragma once

#include "ui/CommonText.h"

#include <array>
#include <string_view>

/// What the onboarding window says, UTF-8.
namespace glimmerly::onboarding_text {

inline constexpr auto windowTitle = "Permissions";
inline constexpr auto title = common_text::screenRecording;
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
inline constexpr auto openSystemSettings = common_text::openSystemSettings;
inline constexpr auto permissionGranted = "Permission granted";
inline constexpr auto quitAndReopen = "Quit & Reopen";
inline constexpr auto continueTitle = "Continue";

static_assert(std::string_view(steps[2]).contains(quitAndReopen) &&
                  std::string_view(baseDetail).contains(quitAndReopen) &&
                  std::string_view(stillOff).contains(quitAndReopen),
              "The texts speak of the button by its title");

} // namespace glimmerly::onboarding_text

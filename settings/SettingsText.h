#pragma once

#include "ui/CommonText.h"

/// What the settings window says, UTF-8.
namespace glimmerly::settings_text {

inline constexpr auto windowName = "Settings"; ///< for those who cannot see it
inline constexpr auto sidebarName = "Categories";
inline constexpr auto general = "General";
inline constexpr auto about = "About";
inline constexpr auto nothingSelected = "Select a category";
inline constexpr auto nothingSelectedDescription = "Choose a category in the sidebar.";
inline constexpr auto menu = "Menu";

inline constexpr auto shortcutsSection = "Shortcuts";
inline constexpr auto takeScreenshot = common_text::takeScreenshot;
inline constexpr auto privacySection = "Privacy";
inline constexpr auto screenRecording = common_text::screenRecording;
inline constexpr auto granted = "Granted";
inline constexpr auto notGranted = "Not granted";
inline constexpr auto screenRecordingPurpose = "Required to capture the display for the annotation overlay.";
inline constexpr auto openSystemSettings = common_text::openSystemSettings;

inline constexpr auto applicationSection = "Application";
inline constexpr auto version = "Version";
inline constexpr auto updatesSection = "Updates";
inline constexpr auto checkForUpdates = "Check for Updates…";
inline constexpr auto automaticallyCheck = "Automatically check for updates";
inline constexpr auto automaticallyDownload = "Download updates in the background";
inline constexpr auto linksSection = "Links";
inline constexpr auto website = "Website";
inline constexpr auto donate = "Donate";
inline constexpr auto reportBug = "Report a bug";

} // namespace glimmerly::settings_text

#pragma once

#include "hotkeys/HotkeyRecorderModel.h"
#include "platform/Application.h"

#include <functional>

namespace glimmerly {

class BugReportSubmission;
class LinkOpener;
class MainQueue;
class NotificationCenter;
class ScreenRecordingPermission;
class StatusItem;
class UpdaterViewModel;

/// What the settings window shows, changes and leads to.
struct SettingsServices {
    BundleInfo bundle;
    Application& application;
    MainQueue& mainQueue;
    NotificationCenter& notifications;
    HotkeyRecorderServices recorder;
    ScreenRecordingPermission& permission;
    LinkOpener& links;
    BugReportSubmission& bugReports;
    StatusItem& statusItem;
    UpdaterViewModel& updaterViewModel;
    std::function<void()> checkForUpdates; ///< as the user asks for it
};

} // namespace glimmerly

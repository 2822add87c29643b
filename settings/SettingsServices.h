#pragma once

#include "hotkeys/HotkeyRecorderModel.h"
#include "platform/Application.h"

namespace glimmerly {

class BugReportSubmission;
class LinkOpener;
class MainQueue;
class NotificationCenter;
class ScreenRecordingPermission;
class StatusItem;
class UpdatePreferences;

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
    UpdatePreferences* updates = nullptr; ///< none: this program cannot update itself
};

} // namespace glimmerly

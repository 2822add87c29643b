#pragma once

#include "base/NotificationCenter.h"
#include "platform/Application.h"

namespace glimmerly {

class Alerts;
class Appearance;
class HotkeyService;
class HttpClient;
class Images;
class KeyboardLayout;
class LinkOpener;
class LocalEvents;
class MainQueue;
class OverlayWindows;
class Pasteboard;
class Preferences;
class SavePanel;
class ScreenCapture;
class ScreenRecordingAccess;
class Screens;
class StatusItem;
class SymbolicHotKeys;
class UpdateFramework;
class Workspace;

/// Every service of the desktop that the program uses. The process has one, set before the first service is
/// made; the shared services are built over it.
struct Platform {
    BundleInfo bundle;
    NotificationCenter& notifications;
    Application& application;
    MainQueue& mainQueue;
    Preferences& preferences;
    Screens& screens;
    ScreenCapture& screenCapture;
    ScreenRecordingAccess& screenRecording;
    Workspace& workspace;
    OverlayWindows& overlayWindows;
    Pasteboard& pasteboard;
    SavePanel& savePanel;
    Alerts& alerts;
    LinkOpener& links;
    Appearance& appearance;
    Images& images;
    HotkeyService& hotkeys;
    KeyboardLayout& keyboardLayout;
    LocalEvents& localEvents;
    const SymbolicHotKeys& symbolicHotKeys;
    StatusItem& statusItem;
    HttpClient& http;
    UpdateFramework& updates;

    [[nodiscard]] static Platform& current();
    /// `platform` must live as long as the process uses it.
    static void setCurrent(Platform& platform);
};

} // namespace glimmerly

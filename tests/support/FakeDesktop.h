#pragma once

#include "base/NotificationCenter.h"
#include "tests/support/FakeAlerts.h"
#include "tests/support/FakeAppearance.h"
#include "tests/support/FakeApplication.h"
#include "tests/support/FakeHttpClient.h"
#include "tests/support/FakeImages.h"
#include "tests/support/FakeKeyboardLayout.h"
#include "tests/support/FakeLinkOpener.h"
#include "tests/support/FakeLocalEvents.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakeOverlayWindows.h"
#include "tests/support/FakePasteboard.h"
#include "tests/support/FakePreferences.h"
#include "tests/support/FakeSavePanel.h"
#include "tests/support/FakeScreenCapture.h"
#include "tests/support/FakeScreenRecordingAccess.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/FakeStatusItem.h"
#include "tests/support/FakeSymbolicHotKeys.h"
#include "tests/support/FakeTelemetry.h"
#include "tests/support/FakeWorkspace.h"
#include "tests/support/LogCapture.h"

namespace glimmerly {

/// All that a program with windows finds around it, as the test plays it; without a display at first.
struct FakeDesktop {
    NotificationCenter notifications;
    FakeApplication application;
    FakeMainQueue mainQueue;
    FakePreferences preferences;
    FakeScreens screens;
    FakeScreenCapture screenCapture{mainQueue};
    FakeScreenRecordingAccess screenRecording;
    FakeWorkspace workspace;
    FakeOverlayWindows overlayWindows;
    FakePasteboard pasteboard;
    FakeSavePanel savePanel;
    FakeAlerts alerts;
    FakeLinkOpener links;
    FakeAppearance appearance;
    FakeImages images;
    FakeKeyboardLayout keyboardLayout{{{0, "a"}, {12, "q"}}};
    FakeLocalEvents localEvents;
    FakeSymbolicHotKeys symbolicHotKeys;
    FakeStatusItem statusItem;
    FakeHttpClient http;
    FakeTelemetry telemetry;
};

} // namespace glimmerly

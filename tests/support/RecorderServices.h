#pragma once

#include "hotkeys/GlobalHotkeyController.h"
#include "hotkeys/HotkeyRecorderModel.h"
#include "tests/support/FakeAlerts.h"
#include "tests/support/FakeHotkeyService.h"
#include "tests/support/FakeKeyboardLayout.h"
#include "tests/support/FakeLocalEvents.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakePreferences.h"
#include "tests/support/FakeSymbolicHotKeys.h"

namespace glimmerly {

/// What a hotkey recorder works with on a made-up desktop where Command-Shift-A is registered.
struct RecorderServices {
    RecorderServices() {
        registration.start([this] { ++screenshots; });
        queue.runAll();
    }

    /// What is registered once everything queued has run.
    [[nodiscard]] std::vector<FakeHotkeyService::Registration> registered() {
        queue.runAll();
        return service.registrations();
    }

    FakePreferences preferences;
    NotificationCenter notifications;
    HotkeySettings settings{preferences, notifications};
    FakeHotkeyService service;
    FakeMainQueue queue;
    GlobalHotkeyController registration{service, settings, queue};
    FakeLocalEvents events;
    FakeSymbolicHotKeys symbolicHotKeys;
    FakeAlerts alerts;
    FakeKeyboardLayout layout{{{0, "a"}}};
    int screenshots = 0;
    HotkeyRecorderServices services{.settings = settings,
                                    .registration = registration,
                                    .events = events,
                                    .symbolicHotKeys = symbolicHotKeys,
                                    .alerts = alerts,
                                    .keyboardLayout = layout,
                                    .notifications = notifications};
};

namespace recorder_key {
inline constexpr KeyDownEvent escape{53, 0};
inline constexpr KeyDownEvent controlOptionCommandSpace{49, event_modifier::control | event_modifier::option |
                                                                event_modifier::command};
} // namespace recorder_key

} // namespace glimmerly

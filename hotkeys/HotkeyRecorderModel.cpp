#include "hotkeys/HotkeyRecorderModel.h"

#include "diagnostics/GlimmerlyLog.h"
#include "hotkeys/GlobalHotkeyController.h"
#include "hotkeys/SystemReservedShortcuts.h"
#include "platform/Alerts.h"
#include "platform/Platform.h"
#include "platform/VirtualKeyCodes.h"

#include <string>

namespace glimmerly {

HotkeyRecorderServices HotkeyRecorderServices::shared() {
    const Platform& platform = Platform::current();
    return {.settings = HotkeySettings::shared(),
            .registration = GlobalHotkeyController::shared(),
            .events = platform.localEvents,
            .symbolicHotKeys = platform.symbolicHotKeys,
            .alerts = platform.alerts,
            .keyboardLayout = platform.keyboardLayout,
            .notifications = platform.notifications};
}

HotkeyRecorderModel::HotkeyRecorderModel(const HotkeyRecorderServices& services)
    : services_(services), settingsObservation_(services_.settings.observeWillChange([this] {
          if (onWillChange_)
              onWillChange_();
      })) {}

HotkeyRecorderModel::~HotkeyRecorderModel() {
    onWillChange_ = {};
    stopRecording();
}

EventMonitor& HotkeyRecorderModel::monitor() {
    if (!monitor_) {
        monitor_.emplace(services_.events, keyDownMask,
                         [this](const KeyDownEvent& event) -> std::optional<KeyDownEvent> {
                             handleKeyDown(event);
                             return {};
                         });
    }
    return *monitor_;
}

void HotkeyRecorderModel::startRecording() {
    if (isRecording_)
        return;
    services_.registration.setSuspendedForRecording(GlobalHotkeyController::Suspension::on);
    monitor().start();
    publish(isRecording_, true);
}

void HotkeyRecorderModel::stopRecording() {
    if (!isRecording_)
        return;
    monitor().stop();
    services_.registration.setSuspendedForRecording(GlobalHotkeyController::Suspension::off);
    publish(isRecording_, false);
}

void HotkeyRecorderModel::handleKeyDown(const KeyDownEvent& event) {
    const Modifiers modifiers = Modifiers::fromEventModifierFlags(event.modifierFlags);
    if (modifiers == Modifiers() && event.keyCode == virtual_key::escape)
        stopRecording();
    else if (modifiers == Modifiers() || modifiers == Modifiers::shift || !event.keyCode)
        services_.alerts.beep();
    else
        record({KeyCode{*event.keyCode}, modifiers});
}

void HotkeyRecorderModel::record(KeyCombination combination) {
    if (isSystemReserved(combination.key, combination.modifiers, services_.symbolicHotKeys)) {
        rejectAsReserved(combination);
        return;
    }
    services_.settings.setKeyCombination(combination);
    stopRecording();
}

void HotkeyRecorderModel::rejectAsReserved(const KeyCombination& combination) {
    GlimmerlyLog::warning(log_category::hotkeyRecorder, "Rejected system-reserved shortcut",
                          {{"key", std::to_string(combination.key.rawValue)},
                           {"modifiers_enc", std::to_string(combination.modifiers.rawValue())}});
    publish(isPresentingSystemReservedError_, true);
}

void HotkeyRecorderModel::dismissSystemReservedError() {
    publish(isPresentingSystemReservedError_, false);
}

void HotkeyRecorderModel::publish(bool& field, bool value) {
    if (onWillChange_)
        onWillChange_();
    field = value;
}

} // namespace glimmerly

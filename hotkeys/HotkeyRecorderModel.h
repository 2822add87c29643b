#pragma once

#include "base/NotificationCenter.h"
#include "hotkeys/EventMonitor.h"
#include "hotkeys/HotkeySettings.h"

#include <functional>
#include <optional>

namespace glimmerly {

class Alerts;
class GlobalHotkeyController;
class KeyboardLayout;
class SymbolicHotKeys;

/// What recording works with; all of it outlives the recorder.
struct HotkeyRecorderServices {
    HotkeySettings& settings;
    GlobalHotkeyController& registration;
    LocalEvents& events;
    const SymbolicHotKeys& symbolicHotKeys;
    Alerts& alerts;
    KeyboardLayout& keyboardLayout;
    NotificationCenter& notifications;

    /// Those of this process.
    [[nodiscard]] static HotkeyRecorderServices shared();
};

/// Turns the first acceptable key press into the hotkey. Meanwhile the old hotkey is suspended, and no key
/// reaches the program's windows. Main thread only.
class HotkeyRecorderModel {
public:
    explicit HotkeyRecorderModel(const HotkeyRecorderServices& services);
    /// Ends a recording.
    ~HotkeyRecorderModel();
    HotkeyRecorderModel(const HotkeyRecorderModel&) = delete;
    HotkeyRecorderModel& operator=(const HotkeyRecorderModel&) = delete;

    [[nodiscard]] bool isRecording() const { return isRecording_; }
    /// While true the user is to be told that a combination is the desktop's own.
    [[nodiscard]] bool isPresentingSystemReservedError() const { return isPresentingSystemReservedError_; }
    [[nodiscard]] HotkeySettings& hotkeySettings() const { return services_.settings; }

    /// Runs just before each change of the above, and of the hotkey by anyone.
    void setOnWillChange(std::function<void()> handler) { onWillChange_ = std::move(handler); }

    void startRecording();
    void stopRecording();
    void handleKeyDown(const KeyDownEvent& event);
    void dismissSystemReservedError();

private:
    [[nodiscard]] EventMonitor& monitor();
    void record(KeyCombination combination);
    void rejectAsReserved(const KeyCombination& combination);
    void publish(bool& field, bool value);

    HotkeyRecorderServices services_;
    bool isRecording_ = false;
    bool isPresentingSystemReservedError_ = false;
    std::optional<EventMonitor> monitor_; ///< made on first use
    std::function<void()> onWillChange_;
    Observation settingsObservation_;
};

} // namespace glimmerly

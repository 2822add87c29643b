#pragma once

#include "base/NotificationCenter.h"
#include "hotkeys/model/KeyCombination.h"

#include <functional>
#include <optional>
#include <string_view>

namespace glimmerly {

class Preferences;

/// The key combination that takes a screenshot from anywhere, kept across launches. Main thread only.
class HotkeySettings {
public:
    /// Posted after every assignment, and once when the settings come up.
    static constexpr std::string_view didChangeNotification = "GlimmerlyGlobalHotkeyDidChange";
    static constexpr std::string_view defaultsKey = "screenshotGlobalHotkey";
    static constexpr KeyCombination defaultCombination{KeyCode{0}, Modifiers::shift | Modifiers::command};

    [[nodiscard]] static HotkeySettings& shared();
    /// Starts with the stored combination; with the default one, which it then stores, when there is none or
    /// it cannot be read.
    HotkeySettings(Preferences& preferences, NotificationCenter& notifications);

    /// None: there is no hotkey for the rest of this run.
    [[nodiscard]] const std::optional<KeyCombination>& keyCombination() const { return keyCombination_; }
    /// Stores it, has it registered and tells everyone, also when it is the one already there.
    void setKeyCombination(std::optional<KeyCombination> combination);

    /// `observer` runs just before each change of the combination.
    [[nodiscard]] Observation observeWillChange(std::function<void()> observer);

    /// What asks the system-wide registration to follow a change; asked at once if one was made before it was
    /// there. The registration reads these settings and sets this itself, so that they need not know it.
    void setRegistrationRefresh(std::function<void()> refresh);

private:
    [[nodiscard]] KeyCombination storedOrDefault() const;
    void persist();
    void refreshIfPossible();

    Preferences& preferences_;
    NotificationCenter& notifications_;
    Observers willChange_;
    std::function<void()> refreshRegistration_;
    bool refreshDue_ = false;
    std::optional<KeyCombination> keyCombination_;
};

} // namespace glimmerly

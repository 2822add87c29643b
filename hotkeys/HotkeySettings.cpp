#include "hotkeys/HotkeySettings.h"

#include "diagnostics/GlimmerlyLog.h"
#include "platform/Platform.h"
#include "platform/Preferences.h"

#include <utility>

namespace glimmerly {

HotkeySettings& HotkeySettings::shared() {
    static HotkeySettings& instance =
        *new HotkeySettings(Platform::current().preferences, Platform::current().notifications);
    return instance;
}

HotkeySettings::HotkeySettings(Preferences& preferences, NotificationCenter& notifications)
    : preferences_(preferences), notifications_(notifications) {
    setKeyCombination(storedOrDefault());
}

void HotkeySettings::setKeyCombination(std::optional<KeyCombination> combination) {
    willChange_.announce();
    keyCombination_ = combination;
    persist();
    refreshDue_ = true;
    refreshIfPossible();
    notifications_.post(didChangeNotification);
}

Observation HotkeySettings::observeWillChange(std::function<void()> observer) {
    return willChange_.add(std::move(observer));
}

void HotkeySettings::setRegistrationRefresh(std::function<void()> refresh) {
    refreshRegistration_ = std::move(refresh);
    refreshIfPossible();
}

void HotkeySettings::refreshIfPossible() {
    if (refreshRegistration_ && std::exchange(refreshDue_, false))
        refreshRegistration_();
}

KeyCombination HotkeySettings::storedOrDefault() const {
    const auto stored = preferences_.data(defaultsKey);
    if (!stored)
        return defaultCombination;
    const auto decoded = KeyCombination::decode(*stored);
    if (!decoded) {
        GlimmerlyLog::error(log_category::hotkeySettings,
                            "Corrupt hotkey shortcut in UserDefaults; restoring default ⌘⇧A",
                            {{"defaults_key", std::string(defaultsKey)}}, decoded.error());
    }
    return decoded.value_or(defaultCombination);
}

void HotkeySettings::persist() {
    if (keyCombination_)
        preferences_.setData(defaultsKey, keyCombination_->encoded());
    else
        preferences_.remove(defaultsKey);
}

} // namespace glimmerly

#pragma once

#include "platform/HotkeyService.h"
#include "platform/KeyboardLayout.h"

namespace glimmerly {

/// In the hotkey service's place on a server without the extensions that it needs: the program then takes its
/// screenshots from the menu.
class NoHotkeyService : public HotkeyService {
public:
    Answer<HandlerRef> installHandler(Handler) override { return {hotkey_status::serviceUnavailable, 0}; }
    HotkeyStatus removeHandler(HandlerRef) override { return hotkey_status::parameterError; }
    Answer<HotkeyRef> registerHotkey(std::uint32_t, std::uint32_t, HotkeyIdentifier) override {
        return {hotkey_status::serviceUnavailable, 0};
    }
    HotkeyStatus unregisterHotkey(HotkeyRef) override { return hotkey_status::hotkeyInvalid; }
    void onLoss(std::function<void(HotkeyStatus)>) override {}
};

/// The layout where the server does not tell it.
class NoKeyboardLayout : public KeyboardLayout {
public:
    [[nodiscard]] std::optional<std::string> translate(std::int64_t) const override { return {}; }
    [[nodiscard]] std::optional<std::string> translateShifted(std::int64_t) const override { return {}; }
    [[nodiscard]] Observation observe(std::function<void()>) override { return {}; }
};

} // namespace glimmerly

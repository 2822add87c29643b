#pragma once

#include "platform/HotkeyService.h"
#include "platform/VirtualKeyCodes.h"

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

namespace glimmerly {

/// An event as a test makes it up.
struct FakeHotkeyEvent : HotkeyEvent {
    FakeHotkeyEvent(HotkeyIdentifier identifierToRead, std::uint32_t kindToTell = hotkeyPressedEventKind)
        : readable(identifierToRead), eventKind(kindToTell) {}

    [[nodiscard]] std::uint32_t kind() const override { return eventKind; }
    [[nodiscard]] std::expected<HotkeyIdentifier, HotkeyStatus> identifier() const override {
        return readable;
    }

    std::expected<HotkeyIdentifier, HotkeyStatus> readable;
    std::uint32_t eventKind;
};

/// A hotkey service whose keys the test presses and whose answers it may choose.
class FakeHotkeyService : public HotkeyService {
public:
    struct Registration {
        std::uint32_t keyCode = 0;
        std::uint32_t carbonFlags = 0;
        HotkeyIdentifier identifier;

        bool operator==(const Registration&) const = default;
    };

    Answer<HandlerRef> installHandler(Handler handler) override {
        ++installations;
        if (installStatus != hotkey_status::success)
            return {installStatus, 0};
        handlers_.emplace(++lastRef_, std::move(handler));
        return {hotkey_status::success, lastRef_};
    }
    HotkeyStatus removeHandler(HandlerRef ref) override {
        return handlers_.erase(ref) == 1 ? hotkey_status::success : hotkey_status::parameterError;
    }
    Answer<HotkeyRef> registerHotkey(std::uint32_t keyCode, std::uint32_t carbonFlags,
                                     HotkeyIdentifier identifier) override {
        ++registrationCalls;
        if (nextRegistrationAnswer) {
            const auto answer = *nextRegistrationAnswer;
            nextRegistrationAnswer.reset();
            return answer;
        }
        if (evdevCodesFromVirtualKeyCode(keyCode).empty())
            return {hotkey_status::hotkeyInvalid, 0};
        if (holder(keyCode, carbonFlags) != registered_.end())
            return {hotkey_status::hotkeyExists, 0};
        registered_.emplace(++lastRef_, Registration{keyCode, carbonFlags, identifier});
        return {hotkey_status::success, lastRef_};
    }
    HotkeyStatus unregisterHotkey(HotkeyRef ref) override {
        if (registered_.erase(ref) == 0)
            return hotkey_status::hotkeyInvalid;
        return unregisterStatus;
    }
    void onLoss(std::function<void(HotkeyStatus)> handler) override { lose = std::move(handler); }

    std::function<void(HotkeyStatus)> lose; ///< what the user of the service has hear of losses

    /// Presses and releases a key: the handlers hear of it when it is a registered hotkey.
    void press(std::uint32_t keyCode, std::uint32_t carbonFlags) {
        if (const auto found = holder(keyCode, carbonFlags); found != registered_.end())
            deliver(FakeHotkeyEvent(found->second.identifier));
    }
    /// The answer of the handler that took `event`, else the last handler's.
    HotkeyStatus deliver(const HotkeyEvent& event) { return deliver(&event); }
    HotkeyStatus deliver(const HotkeyEvent* event) {
        HotkeyStatus status = hotkey_status::eventNotHandled;
        for (const auto& [ref, handler] : std::map(handlers_)) {
            status = handler(event);
            if (status == hotkey_status::success)
                break;
        }
        return status;
    }

    [[nodiscard]] std::vector<Registration> registrations() const {
        std::vector<Registration> all;
        for (const auto& [ref, registration] : registered_)
            all.push_back(registration);
        return all;
    }
    [[nodiscard]] std::size_t handlerCount() const { return handlers_.size(); }

    HotkeyStatus installStatus = hotkey_status::success;
    HotkeyStatus unregisterStatus = hotkey_status::success;
    std::optional<Answer<HotkeyRef>> nextRegistrationAnswer; ///< given once instead of registering
    int installations = 0;
    int registrationCalls = 0;

private:
    std::map<HotkeyRef, Registration>::iterator holder(std::uint32_t keyCode, std::uint32_t carbonFlags) {
        return std::ranges::find_if(registered_, [&](const auto& entry) {
            return entry.second.keyCode == keyCode && entry.second.carbonFlags == carbonFlags;
        });
    }

    std::map<HandlerRef, Handler> handlers_;
    std::map<HotkeyRef, Registration> registered_;
    std::uint64_t lastRef_ = 0;
};

} // namespace glimmerly

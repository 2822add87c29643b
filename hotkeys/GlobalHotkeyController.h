#pragma once

#include "platform/HotkeyService.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace glimmerly {

class HotkeySettings;
class MainQueue;

/// Keeps the combination of the settings registered with the desktop's hotkey service, and has a screenshot
/// taken when it is pressed. What fails is logged; the program goes on without a hotkey. Main thread only.
class GlobalHotkeyController {
public:
    enum class Suspension { off, on };

    /// Signature "GLMR" and number 1.
    static constexpr HotkeyIdentifier registrationID{0x474C4D52, 1};

    [[nodiscard]] static GlobalHotkeyController& shared();
    GlobalHotkeyController(HotkeyService& service, HotkeySettings& settings, MainQueue& mainQueue);
    ~GlobalHotkeyController();
    GlobalHotkeyController(const GlobalHotkeyController&) = delete;
    GlobalHotkeyController& operator=(const GlobalHotkeyController&) = delete;

    /// Installs the event handler and registers the hotkey; each press then runs `requestScreenshot` on the
    /// main queue.
    void start(std::function<void()> requestScreenshot);
    /// Queues a new registration of the current combination.
    void refresh();
    /// While a new combination is being recorded no hotkey is registered. Queues the change.
    void setSuspendedForRecording(Suspension suspension);
    /// Releases the registered hotkey, if any.
    void unregister();
    /// Releases the hotkey and the event handler.
    void shutdown();

private:
    static HotkeyStatus handleEvent(const HotkeyEvent* event, GlobalHotkeyController* controller);
    void reregister();
    [[nodiscard]] HotkeyStatus registerCurrent();
    void hotkeyPressed();
    void postToSelf(void (GlobalHotkeyController::*task)());

    HotkeyService& service_;
    HotkeySettings& settings_;
    MainQueue& mainQueue_;
    std::function<void()> requestScreenshot_;
    std::optional<HotkeyService::HandlerRef> eventHandlerRef_;
    std::optional<HotkeyService::HotkeyRef> hotKeyRef_;
    Suspension suspendedForRecording_ = Suspension::off;
    /// Held weakly by what outlives the controller: queued tasks and the service's handler.
    std::shared_ptr<GlobalHotkeyController*> self_;
};

} // namespace glimmerly

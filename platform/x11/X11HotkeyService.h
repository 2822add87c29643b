#pragma once

#include "platform/HotkeyService.h"
#include "platform/x11/X11EventSource.h"
#include "platform/x11/X11HotkeyGrab.h"
#include "platform/x11/X11HotkeyHeldKeys.h"
#include "platform/x11/X11HotkeyModifiers.h"
#include "platform/x11/X11KeyboardExtension.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <map>
#include <vector>

namespace glimmerly {

/// Hotkeys as passive key grabs on the root window. While a window of our own holds the keyboard no passive
/// grab acts; presses are then found among Qt's events.
class X11HotkeyService : public HotkeyService, private QAbstractNativeEventFilter {
public:
    [[nodiscard]] static Result<std::unique_ptr<X11HotkeyService>> open();
    ~X11HotkeyService() override;

    [[nodiscard]] Answer<HandlerRef> installHandler(Handler handler) override;
    HotkeyStatus removeHandler(HandlerRef ref) override;
    [[nodiscard]] Answer<HotkeyRef> registerHotkey(std::uint32_t keyCode, std::uint32_t carbonFlags,
                                                   HotkeyIdentifier identifier) override;
    [[nodiscard]] HotkeyStatus unregisterHotkey(HotkeyRef ref) override;
    void onLoss(std::function<void(HotkeyStatus)> handler) override { onLoss_ = std::move(handler); }

private:
    struct Registration {
        std::uint32_t carbonFlags = 0;
        HotkeyIdentifier identifier;
        std::vector<xcb_keycode_t> keycodes;
        std::uint16_t requiredModifiers = 0;
        std::unique_ptr<X11HotkeyGrab> grab;
    };

    X11HotkeyService(std::unique_ptr<X11Connection> connection, X11KeyboardExtension keyboard,
                     std::uint8_t inputOpcode);
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    [[nodiscard]] HotkeyStatus grab(Registration& registration);
    /// What is down now was not pressed as this hotkey; its repeats must not count either.
    void ignoreWhatIsDown(const Registration& registration);
    void followModifiers();
    [[nodiscard]] const Registration* find(const xcb_key_press_event_t& event) const;

    void handle(const xcb_generic_event_t& event);
    void handleGrabbedPress(const xcb_key_press_event_t& event);
    void handlePressInOwnWindow(HotkeyIdentifier identifier, const xcb_key_press_event_t& event);
    void release(xcb_keycode_t keycode, xcb_timestamp_t time);
    [[nodiscard]] bool isDown(xcb_keycode_t keycode) const;
    enum class Releases { ignored, watched };
    void watchReleases(Releases releases);
    void deliver(HotkeyIdentifier identifier);

    std::unique_ptr<X11Connection> connection_;
    X11KeyboardExtension keyboard_;
    std::uint8_t inputOpcode_;
    X11HotkeyModifiers modifiers_;
    X11HotkeyHeldKeys heldKeys_;
    std::map<HandlerRef, Handler> handlers_;
    std::map<HotkeyRef, Registration> registrations_;
    std::vector<xcb_keycode_t> letGoInThisTurn_;
    QObject nextTurn_;
    std::uint64_t lastRef_ = 0;
    std::function<void(HotkeyStatus)> onLoss_;
    X11EventSource events_;
};

} // namespace glimmerly

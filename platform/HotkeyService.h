#pragma once

#include <cstdint>
#include <expected>
#include <functional>

namespace glimmerly {

/// The hotkey service's answers: 0 is success, everything else names a failure.
using HotkeyStatus = std::int32_t;
namespace hotkey_status {
inline constexpr HotkeyStatus success = 0;
inline constexpr HotkeyStatus parameterError = -50;
inline constexpr HotkeyStatus eventNotHandled = -9874;
inline constexpr HotkeyStatus serviceUnavailable = -9868; ///< the window server has gone
inline constexpr HotkeyStatus hotkeyExists = -9878;       ///< this or another program holds the combination
inline constexpr HotkeyStatus hotkeyInvalid = -9879;      ///< no such key here, or no such registration
} // namespace hotkey_status

/// The service's own modifier flags.
namespace hotkey_modifier {
inline constexpr std::uint32_t command = 0x100;
inline constexpr std::uint32_t shift = 0x200;
inline constexpr std::uint32_t option = 0x800;
inline constexpr std::uint32_t control = 0x1000;
} // namespace hotkey_modifier

struct HotkeyIdentifier {
    std::uint32_t signature = 0; ///< four ASCII characters, the first in the most significant byte
    std::uint32_t number = 0;

    bool operator==(const HotkeyIdentifier&) const = default;
};

inline constexpr std::uint32_t hotkeyPressedEventKind = 5;
inline constexpr std::uint32_t hotkeyReleasedEventKind = 6;

/// One press or release of a registered hotkey, as the service delivers it.
class HotkeyEvent {
public:
    virtual ~HotkeyEvent() = default;
    [[nodiscard]] virtual std::uint32_t kind() const = 0;
    /// The identifier given at registration, or why it cannot be read.
    [[nodiscard]] virtual std::expected<HotkeyIdentifier, HotkeyStatus> identifier() const = 0;
};

/// Hotkeys that work in every application, in this one's own windows too. Main thread only.
class HotkeyService {
public:
    /// Names for what the caller installed or registered; only the service's own call releases it.
    using HandlerRef = std::uint64_t;
    using HotkeyRef = std::uint64_t;
    /// Answers `success` for an event that it took, so that no other handler gets it.
    using Handler = std::function<HotkeyStatus(const HotkeyEvent* event)>;
    template <typename Ref>
    struct Answer {
        HotkeyStatus status = hotkey_status::success;
        Ref ref = 0; ///< 0: none
    };

    virtual ~HotkeyService() = default;

    /// `handler` receives each press of every hotkey, once however long the key is held, until it is removed.
    [[nodiscard]] virtual Answer<HandlerRef> installHandler(Handler handler) = 0;
    virtual HotkeyStatus removeHandler(HandlerRef ref) = 0;

    /// `keyCode` is a virtual key code (a position), `carbonFlags` the service's own modifier flags: exactly
    /// these are held when it is pressed, whatever the lock keys say.
    [[nodiscard]] virtual Answer<HotkeyRef> registerHotkey(std::uint32_t keyCode, std::uint32_t carbonFlags,
                                                           HotkeyIdentifier identifier) = 0;
    [[nodiscard]] virtual HotkeyStatus unregisterHotkey(HotkeyRef ref) = 0;

    /// `handler` hears why a registered hotkey no longer works, as when the keyboard was laid out anew and
    /// another program is first. It stays registered, and works again as soon as the keyboard allows.
    virtual void onLoss(std::function<void(HotkeyStatus)> handler) = 0;
};

} // namespace glimmerly

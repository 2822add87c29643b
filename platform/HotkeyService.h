#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace glimmerly {

/// The hotkey service's answers: 0 is success, everything else names a failure.
using HotkeyStatus = std::int32_t;
namespace hotkey_status {
inline constexpr HotkeyStatus success = 0;
inline constexpr HotkeyStatus parameterError = -50;
inline constexpr HotkeyStatus eventNotHandled = -9874;
inline constexpr HotkeyStatus hotkeyExists = -9878;  ///< another program holds the combination
inline constexpr HotkeyStatus hotkeyInvalid = -9879; ///< no such key here, or no such registration
} // namespace hotkey_status

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
    /// Reads the identifier given at registration into `identifier`.
    [[nodiscard]] virtual HotkeyStatus readIdentifier(HotkeyIdentifier& identifier) const = 0;
};

/// Hotkeys that work in every application. Main thread only.
class HotkeyService {
public:
    /// Owned registrations; letting one go is not releasing it, that takes the service's own call.
    using HandlerRef = std::uint64_t;
    using HotkeyRef = std::uint64_t;
    using Handler = std::function<HotkeyStatus(const HotkeyEvent* event)>;
    template <typename Ref>
    struct Answer {
        HotkeyStatus status = hotkey_status::success;
        Ref ref = 0; ///< 0: none
    };

    virtual ~HotkeyService() = default;

    /// `handler` receives each event of every hotkey until it is removed.
    [[nodiscard]] virtual Answer<HandlerRef> installHandler(Handler handler) = 0;
    virtual HotkeyStatus removeHandler(HandlerRef ref) = 0;

    /// `keyCode` is a virtual key code (a position), `carbonFlags` the service's own modifier flags.
    [[nodiscard]] virtual Answer<HotkeyRef> registerHotkey(std::uint32_t keyCode, std::uint32_t carbonFlags,
                                                           HotkeyIdentifier identifier) = 0;
    [[nodiscard]] virtual HotkeyStatus unregisterHotkey(HotkeyRef ref) = 0;
};

} // namespace glimmerly

#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace glimmerly {

/// The modifier flags of key events, the same on every keyboard.
namespace event_modifier {
inline constexpr std::uint64_t shift = 1U << 17;
inline constexpr std::uint64_t control = 1U << 18;
inline constexpr std::uint64_t option = 1U << 19;
inline constexpr std::uint64_t command = 1U << 20;
} // namespace event_modifier

/// One bit for each type of event.
using EventTypeMask = std::uint64_t;
inline constexpr EventTypeMask keyDownMask = 1U << 10;

/// A key pressed in a window of this program, or repeated while it is held. Modifier keys alone make none;
/// while there is a monitor no window gets them either.
struct KeyDownEvent {
    std::optional<std::int64_t> keyCode; ///< virtual key code; none for a key that has none
    std::uint64_t modifierFlags = 0;

    bool operator==(const KeyDownEvent&) const = default;
};

/// The events of this program's own windows, before they reach these. Main thread only.
class LocalEvents {
public:
    /// Answers the event that goes on to its window, or none to keep it from there.
    using Handler = std::function<std::optional<KeyDownEvent>(const KeyDownEvent&)>;
    using Monitor = std::uint64_t;

    virtual ~LocalEvents() = default;

    /// `handler` gets each event of a type in `mask`, of which key-downs are the only ones known, until the
    /// monitor is removed, which it may do itself. Keys that the desktop would act on come too, as long as a
    /// window of this program is in front.
    [[nodiscard]] virtual Monitor addLocalMonitorForEvents(EventTypeMask mask, Handler handler) = 0;
    /// What is still held then stays kept from the windows until it is released.
    virtual void removeMonitor(Monitor monitor) = 0;
};

} // namespace glimmerly

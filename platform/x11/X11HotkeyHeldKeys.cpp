#include "platform/x11/X11HotkeyHeldKeys.h"

#include <algorithm>
#include <cstdint>

namespace glimmerly {

namespace {

// Milliseconds. No keyboard repeats more slowly than this; a longer silence means that a release was missed.
constexpr std::int32_t longestRepeatInterval = 5'000;
// No event stays unread for longer than this.
constexpr std::int32_t longestDelivery = 60'000;

/// From `start` to `end` in milliseconds; the server's clock starts again every 49.7 days.
std::int32_t elapsed(xcb_timestamp_t start, xcb_timestamp_t end) {
    return static_cast<std::int32_t>(end - start);
}

} // namespace

X11HotkeyHeldKeys::Press X11HotkeyHeldKeys::press(xcb_keycode_t keycode, xcb_timestamp_t time, Order order) {
    const auto [entry, isNew] = keys_.try_emplace(keycode, Key{time, {}});
    Key& key = entry->second;
    if (isNew)
        return Press::first;
    if (key.released) {
        const std::int32_t lateness = elapsed(time, *key.released);
        if (order == Order::byTime && lateness >= 0 && lateness < longestDelivery)
            return Press::repeated;
    } else {
        const std::int32_t silence = key.lastPress ? elapsed(*key.lastPress, time) : 0;
        if (silence < longestRepeatInterval) {
            if (silence > 0 || !key.lastPress)
                key.lastPress = time;
            return Press::repeated;
        }
    }
    key = {time, {}};
    return Press::first;
}

void X11HotkeyHeldKeys::hold(xcb_keycode_t keycode) {
    const auto [entry, isNew] = keys_.try_emplace(keycode);
    if (!isNew && entry->second.released)
        entry->second = {};
}

void X11HotkeyHeldKeys::release(xcb_keycode_t keycode, xcb_timestamp_t time) {
    const auto found = keys_.find(keycode);
    if (found == keys_.end() || found->second.released)
        return;
    Key& key = found->second;
    if (!key.lastPress || elapsed(*key.lastPress, time) >= 0)
        key.released = time;
}

bool X11HotkeyHeldKeys::anyHeld() const {
    return std::ranges::any_of(keys_, [](const auto& entry) { return !entry.second.released; });
}

} // namespace glimmerly

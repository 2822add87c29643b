#include "platform/x11/X11HeldKeys.h"

#include <QAbstractEventDispatcher>

#include <algorithm>
#include <span>
#include <utility>

namespace glimmerly {

namespace {

bool contains(const X11HeldKeys::KeySet& keys, xcb_keycode_t key) {
    return (keys[key / 8] >> key % 8 & 1) != 0;
}

/// Has whoever looks at the native events of our own windows look at this one too: a hotkey acts nowhere else
/// while a client has the keyboard.
void showToNativeEventFilters(const xcb_key_press_event_t& event) {
    xcb_key_press_event_t shown = event;
    qintptr ignored = 0;
    QAbstractEventDispatcher::instance()->filterNativeEvent("xcb_generic_event_t", &shown, &ignored);
}

} // namespace

X11HeldKeys::X11HeldKeys(const X11Connection& connection) : connection_(connection) {}

void X11HeldKeys::swallowUntilReleased() {
    heldBefore_ = keysDown();
    if (hasKeyboard_ || !anyKeyDown())
        return;
    xcb_connection_t* const x = connection_.get();
    const auto cookie = xcb_grab_keyboard(x, 0, connection_.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                          XCB_GRAB_MODE_ASYNC);
    const XcbOwned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(x, cookie, nullptr));
    hasKeyboard_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    handleRelease();
}

void X11HeldKeys::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & ~0x80) {
    case XCB_KEY_PRESS:
        handlePress(reinterpret_cast<const xcb_key_press_event_t&>(event));
        break;
    case XCB_KEY_RELEASE:
        handleRelease();
        break;
    default:
        break;
    }
}

void X11HeldKeys::handlePress(const xcb_key_press_event_t& event) {
    if (!hasKeyboard_ || contains(heldBefore_, event.detail) || contains(modifierKeys(), event.detail))
        return;
    // The key pressed last is the one that repeats, so the earlier one is silent from here on.
    letGo();
    showToNativeEventFilters(event);
}

void X11HeldKeys::handleRelease() {
    if (!anyKeyDown())
        letGo();
}

void X11HeldKeys::letGo() {
    if (!std::exchange(hasKeyboard_, false))
        return;
    xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
}

X11HeldKeys::KeySet X11HeldKeys::modifierKeys() const {
    xcb_connection_t* const x = connection_.get();
    const XcbOwned<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(x, xcb_get_modifier_mapping(x), nullptr));
    KeySet keys{};
    if (!mapping)
        return keys;
    const std::span codes(xcb_get_modifier_mapping_keycodes(mapping.get()),
                          static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(mapping.get())));
    for (const std::uint8_t code : codes)
        keys[code / 8] = static_cast<std::uint8_t>(keys[code / 8] | 1 << code % 8);
    return keys;
}

X11HeldKeys::KeySet X11HeldKeys::keysDown() const {
    xcb_connection_t* const x = connection_.get();
    const XcbOwned<xcb_query_keymap_reply_t> reply(xcb_query_keymap_reply(x, xcb_query_keymap(x), nullptr));
    KeySet keys{};
    if (reply)
        std::ranges::copy(reply->keys, keys.begin());
    return keys;
}

bool X11HeldKeys::anyKeyDown() const {
    const auto onlyModifiers = [](std::uint8_t pressed, std::uint8_t modifiers) {
        return (pressed & ~modifiers) == 0;
    };
    return !std::ranges::equal(keysDown(), modifierKeys(), onlyModifiers);
}

} // namespace glimmerly

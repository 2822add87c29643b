#include "platform/x11/X11HeldKeys.h"

#include <algorithm>
#include <span>

namespace glimmerly {

X11HeldKeys::X11HeldKeys(const X11Connection& connection) : connection_(connection) {}

void X11HeldKeys::swallowUntilReleased() {
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
    if ((event.response_type & ~0x80) == XCB_KEY_RELEASE)
        handleRelease();
}

void X11HeldKeys::handleRelease() {
    if (!hasKeyboard_ || anyKeyDown())
        return;
    xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
    hasKeyboard_ = false;
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

bool X11HeldKeys::anyKeyDown() const {
    xcb_connection_t* const x = connection_.get();
    const XcbOwned<xcb_query_keymap_reply_t> down(xcb_query_keymap_reply(x, xcb_query_keymap(x), nullptr));
    if (!down)
        return false;
    const auto onlyModifiers = [](std::uint8_t pressed, std::uint8_t modifiers) {
        return (pressed & ~modifiers) == 0;
    };
    return !std::ranges::equal(down->keys, modifierKeys(), onlyModifiers);
}

} // namespace glimmerly

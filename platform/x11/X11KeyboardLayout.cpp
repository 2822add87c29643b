#include "platform/x11/X11KeyboardLayout.h"

#include "platform/VirtualKeyCodes.h"

#include <xkbcommon/xkbcommon-x11.h>

#include <utility>

namespace glimmerly {

Result<std::unique_ptr<X11KeyboardLayout>> X11KeyboardLayout::open() {
    auto connection = X11Connection::open();
    if (!connection)
        return failure(connection.error());
    const auto extension = X11KeyboardExtension::enable(**connection);
    if (!extension)
        return failure(extension.error());
    XkbContext context = makeXkbContext();
    if (!context)
        return failure({"X11", -1, "No description of keyboards on this system."});
    return std::unique_ptr<X11KeyboardLayout>(
        new X11KeyboardLayout(std::move(*connection), std::move(context), *extension));
}

X11KeyboardLayout::X11KeyboardLayout(std::unique_ptr<X11Connection> connection, XkbContext context,
                                     X11KeyboardExtension extension)
    : connection_(std::move(connection)), context_(std::move(context)), extension_(extension),
      events_(*connection_, [this](const xcb_generic_event_t& event) { handle(event); }) {}

std::optional<std::string> X11KeyboardLayout::translate(std::int64_t keyCode) const {
    return textOn(keyCode, KeyLevel::plain);
}

std::optional<std::string> X11KeyboardLayout::translateShifted(std::int64_t keyCode) const {
    return textOn(keyCode, KeyLevel::shifted);
}

std::optional<std::string> X11KeyboardLayout::textOn(std::int64_t keyCode, KeyLevel level) const {
    const auto positions = evdevCodesFromVirtualKeyCode(keyCode);
    if (positions.empty())
        return {};
    if (!symbols_)
        symbols_ = readSymbols();
    return symbols_->text(positions.front() + firstXKeycode, level);
}

Observation X11KeyboardLayout::observe(std::function<void()> observer) {
    return observers_.add(std::move(observer));
}

X11KeyboardSymbols X11KeyboardLayout::readSymbols() const {
    xcb_connection_t* const connection = connection_->get();
    const auto cookie = xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD);
    const XcbOwned<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(connection, cookie, nullptr));
    const std::int32_t device = xkb_x11_get_core_keyboard_device_id(connection);
    XkbKeymap keymap(device < 0 ? nullptr
                                : xkb_x11_keymap_new_from_device(context_.get(), connection, device,
                                                                 XKB_KEYMAP_COMPILE_NO_FLAGS));
    return {std::move(keymap), state ? state->group : xkb_layout_index_t{0}};
}

void X11KeyboardLayout::handle(const xcb_generic_event_t& event) {
    if (!extension_.change(event))
        return;
    symbols_.reset();
    // Setting one layout makes several events.
    if (std::exchange(announcement_, Announcement::queued) == Announcement::none)
        QMetaObject::invokeMethod(&announcer_, [this] { announce(); }, Qt::QueuedConnection);
}

void X11KeyboardLayout::announce() {
    announcement_ = Announcement::none;
    observers_.announce();
}

} // namespace glimmerly

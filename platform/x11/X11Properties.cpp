#include "platform/x11/X11Properties.h"

#include <span>

namespace glimmerly::x11_properties {

namespace {

constexpr std::uint32_t mostWords = 1 << 16; // of 4 bytes

XcbOwned<xcb_get_property_reply_t> read(const X11Connection& connection, xcb_window_t window,
                                        xcb_atom_t property) {
    const auto cookie =
        xcb_get_property(connection.get(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, mostWords);
    xcb_generic_error_t* problem = nullptr;
    XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection.get(), cookie, &problem));
    const XcbOwned<xcb_generic_error_t> ignored(problem);
    return reply;
}

} // namespace

std::vector<std::uint32_t> values(const X11Connection& connection, xcb_window_t window, xcb_atom_t property) {
    const auto reply = read(connection, window, property);
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    const std::span all(first, reply->value_len);
    return {all.begin(), all.end()};
}

std::uint32_t value(const X11Connection& connection, xcb_window_t window, xcb_atom_t property) {
    const auto all = values(connection, window, property);
    return all.empty() ? 0 : all.front();
}

std::string text(const X11Connection& connection, xcb_window_t window, xcb_atom_t property) {
    const auto reply = read(connection, window, property);
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

} // namespace glimmerly::x11_properties

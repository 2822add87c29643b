#include "platform/x11/X11Connection.h"

#include <string>

namespace glimmerly {

namespace {
constexpr std::string_view domain = "X11";
}

Result<std::unique_ptr<X11Connection>> X11Connection::open() {
    int preferredScreen = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &preferredScreen);
    if (const int problem = xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return failure({std::string(domain), problem, "No connection to the X server."});
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < preferredScreen && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screens.data));
}

X11Connection::~X11Connection() {
    xcb_disconnect(connection_);
}

xcb_atom_t X11Connection::atom(std::string_view name) const {
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void X11Connection::sync() const {
    const XcbOwned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

Error x11Error(const xcb_generic_error_t* error, std::string_view what) {
    if (!error)
        return {std::string(domain), -1, std::string(what) + ": the X server has gone."};
    return {std::string(domain), error->error_code,
            std::string(what) + ": X error " + std::to_string(error->error_code) + "."};
}

} // namespace glimmerly

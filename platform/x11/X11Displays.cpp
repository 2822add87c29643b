#include "platform/x11/X11Displays.h"

#include <xcb/randr.h>

#include <algorithm>
#include <optional>

namespace glimmerly {

namespace {

/// None where the server does not know RandR.
const xcb_query_extension_reply_t* randr(xcb_connection_t* x) {
    const auto* extension = xcb_get_extension_data(x, &xcb_randr_id);
    return extension != nullptr && extension->present ? extension : nullptr;
}

bool hasMonitors(xcb_connection_t* x) {
    if (randr(x) == nullptr)
        return false;
    const XcbOwned<xcb_randr_query_version_reply_t> version(
        xcb_randr_query_version_reply(x, xcb_randr_query_version(x, 1, 5), nullptr));
    return version && (version->major_version > 1 || version->minor_version >= 5);
}

std::vector<X11Display> wholeRoot(const X11Connection& connection) {
    xcb_connection_t* const x = connection.get();
    const XcbOwned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(x, xcb_get_geometry(x, connection.root()), nullptr));
    if (!geometry)
        return {};
    const std::string name = "root";
    return {{connection.atom(name), name, {0, 0, geometry->width, geometry->height}}};
}

} // namespace

std::vector<X11Display> x11Displays(const X11Connection& connection) {
    xcb_connection_t* const x = connection.get();
    if (!hasMonitors(x))
        return wholeRoot(connection);
    const XcbOwned<xcb_randr_get_monitors_reply_t> monitors(
        xcb_randr_get_monitors_reply(x, xcb_randr_get_monitors(x, connection.root(), 1), nullptr));
    if (!monitors)
        return {};
    std::vector<xcb_get_atom_name_cookie_t> names;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(monitors.get()); it.rem > 0;
         xcb_randr_monitor_info_next(&it))
        names.push_back(xcb_get_atom_name(x, it.data->name));

    std::vector<X11Display> displays;
    std::size_t primary = 0;
    auto it = xcb_randr_get_monitors_monitors_iterator(monitors.get());
    for (const auto cookie : names) {
        const XcbOwned<xcb_get_atom_name_reply_t> name(xcb_get_atom_name_reply(x, cookie, nullptr));
        const auto& monitor = *it.data;
        if (monitor.primary)
            primary = displays.size();
        if (name)
            displays.push_back({monitor.name,
                                {xcb_get_atom_name_name(name.get()),
                                 static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get()))},
                                {monitor.x, monitor.y, monitor.width, monitor.height}});
        xcb_randr_monitor_info_next(&it);
    }
    if (primary < displays.size())
        std::rotate(displays.begin(), displays.begin() + static_cast<std::ptrdiff_t>(primary),
                    displays.begin() + static_cast<std::ptrdiff_t>(primary) + 1);
    return displays;
}

void selectDisplayChanges(const X11Connection& connection) {
    if (randr(connection.get()) == nullptr)
        return;
    xcb_randr_select_input(connection.get(), connection.root(), XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE);
    xcb_flush(connection.get());
}

bool isDisplayChange(const X11Connection& connection, const xcb_generic_event_t& event) {
    const auto* extension = randr(connection.get());
    return extension != nullptr &&
           (event.response_type & ~0x80) == extension->first_event + XCB_RANDR_SCREEN_CHANGE_NOTIFY;
}

} // namespace glimmerly

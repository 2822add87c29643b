#include "platform/x11/X11ServerTime.h"

namespace glimmerly {

xcb_timestamp_t serverTime(const X11Connection& connection) {
    // The server stamps events only, so change a property of a window made for this.
    xcb_connection_t* const x = connection.get();
    const xcb_window_t window = xcb_generate_id(x);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(x, 0, window, connection.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(x, XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_destroy_window(x, window);
    xcb_flush(x);
    while (const XcbOwned<xcb_generic_event_t> event{xcb_wait_for_event(x)}) {
        if ((event->response_type & ~0x80) == XCB_PROPERTY_NOTIFY)
            return reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
    }
    return 0;
}

} // namespace glimmerly

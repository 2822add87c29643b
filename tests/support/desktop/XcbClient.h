#pragma once

#include "tests/support/desktop/Robot.h"
#include "tests/support/desktop/XClient.h"

#include <string>
#include <vector>

namespace glimmerly {

/// Another program of the desktop: it has windows, hears what is typed into them, and has hands.
class XcbClient : public XClient {
public:
    struct WindowOptions {
        PixelRect area{20, 30, 200, 100};
        std::uint32_t colour = 0x336699;
        bool overrideRedirect = false;
        std::uint32_t process = 1;
        std::string applicationClass = "Example";
        std::string type{}; ///< the last part of a _NET_WM_WINDOW_TYPE
    };

    XcbClient() : XClient({}) {}

    /// A window on its way to the screen.
    xcb_window_t open(const WindowOptions& options) {
        const xcb_window_t window = xcb_generate_id(get());
        const std::uint32_t attributes[] = {options.colour, options.overrideRedirect,
                                            XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE};
        xcb_create_window(
            get(), XCB_COPY_FROM_PARENT, window, root(), static_cast<std::int16_t>(options.area.x),
            static_cast<std::int16_t>(options.area.y), static_cast<std::uint16_t>(options.area.width),
            static_cast<std::uint16_t>(options.area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
            XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
            attributes);
        setText(window, "WM_CLASS", "example" + std::string(1, '\0') + options.applicationClass + '\0');
        setNumber(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, options.process);
        if (!options.type.empty())
            setNumber(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
                      atom("_NET_WM_WINDOW_TYPE_" + options.type));
        xcb_map_window(get(), window);
        sync();
        return window;
    }
    void close(xcb_window_t window) {
        xcb_destroy_window(get(), window);
        sync();
    }
    [[nodiscard]] bool hasMade(xcb_window_t window) const {
        const auto& setup = *xcb_get_setup(get());
        return (window & ~setup.resource_id_mask) == setup.resource_id_base;
    }
    void iconify(xcb_window_t window) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("WM_CHANGE_STATE");
        event.data.data32[0] = 3;
        xcb_send_event(get(), 0, root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
        sync();
    }
    void raise(xcb_window_t window) {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        sync();
    }
    /// Tries to give it the keyboard; answers who has it then.
    xcb_window_t focus(xcb_window_t window) {
        xcb_set_input_focus(get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
        return focusedWindow();
    }
    /// How many key presses have arrived at this client's windows since the last call.
    int takeKeyPresses() {
        int presses = 0;
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(get())})
            presses += (event->response_type & ~0x80) == XCB_KEY_PRESS ? 1 : 0;
        return presses;
    }
    [[nodiscard]] Bitmap::Pixel pixel(int x, int y) const { return pixels({x, y, 1, 1}).row(0)[0]; }
    void setText(xcb_window_t window, const char* property, const std::string& text) {
        xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
        sync();
    }

    Robot robot{*this};

private:
    void setNumber(xcb_window_t window, const char* property, xcb_atom_t type, std::uint32_t value) {
        xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), type, 32, 1, &value);
    }
};

} // namespace glimmerly

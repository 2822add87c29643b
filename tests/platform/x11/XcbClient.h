#pragma once

#include "base/Bitmap.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Properties.h"

#include <xcb/xtest.h>

#include <string>
#include <vector>

namespace glimmerly {

/// Another program of the desktop: it has windows, hears what is typed into them, and can press keys.
class XcbClient {
public:
    struct WindowOptions {
        PixelRect area{20, 30, 200, 100};
        std::uint32_t colour = 0x336699;
        bool overrideRedirect = false;
        std::uint32_t process = 1;
        std::string applicationClass = "Example";
        std::string type{}; ///< the last part of a _NET_WM_WINDOW_TYPE
    };

    XcbClient() : connection_(X11Connection::open().value()) {}

    [[nodiscard]] const X11Connection& connection() const { return *connection_; }
    [[nodiscard]] xcb_window_t root() const { return connection_->root(); }

    /// A window on its way to the screen.
    xcb_window_t open(const WindowOptions& options) {
        xcb_connection_t* const x = connection_->get();
        const xcb_window_t window = xcb_generate_id(x);
        const std::uint32_t attributes[] = {options.colour, options.overrideRedirect,
                                            XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_FOCUS_CHANGE};
        xcb_create_window(x, XCB_COPY_FROM_PARENT, window, root(), static_cast<std::int16_t>(options.area.x),
                          static_cast<std::int16_t>(options.area.y),
                          static_cast<std::uint16_t>(options.area.width),
                          static_cast<std::uint16_t>(options.area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, attributes);
        const std::string names = "example" + std::string(1, '\0') + options.applicationClass + '\0';
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(names.size()), names.data());
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, connection_->atom("_NET_WM_PID"),
                            XCB_ATOM_CARDINAL, 32, 1, &options.process);
        if (!options.type.empty()) {
            const xcb_atom_t type = connection_->atom("_NET_WM_WINDOW_TYPE_" + options.type);
            xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, connection_->atom("_NET_WM_WINDOW_TYPE"),
                                XCB_ATOM_ATOM, 32, 1, &type);
        }
        xcb_map_window(x, window);
        sync();
        return window;
    }
    void close(xcb_window_t window) {
        xcb_destroy_window(connection_->get(), window);
        sync();
    }
    [[nodiscard]] bool hasMade(xcb_window_t window) const {
        const auto& setup = *xcb_get_setup(connection_->get());
        return (window & ~setup.resource_id_mask) == setup.resource_id_base;
    }
    void iconify(xcb_window_t window) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = connection_->atom("WM_CHANGE_STATE");
        event.data.data32[0] = 3;
        xcb_send_event(connection_->get(), 0, root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
        sync();
    }
    void raise(xcb_window_t window) {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(connection_->get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        sync();
    }
    /// Tries to give it the keyboard; answers who has it then.
    xcb_window_t focus(xcb_window_t window) {
        xcb_set_input_focus(connection_->get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
        return focusedWindow();
    }
    [[nodiscard]] xcb_window_t focusedWindow() const {
        xcb_connection_t* const x = connection_->get();
        const XcbOwned<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
        return reply->focus;
    }
    /// How many key presses have arrived at this client's windows since the last call.
    int takeKeyPresses() {
        int presses = 0;
        while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())})
            presses += (event->response_type & ~0x80) == XCB_KEY_PRESS ? 1 : 0;
        return presses;
    }

    void movePointer(int x, int y) { fake(XCB_MOTION_NOTIFY, 0, x, y); }
    void pressButton(int button) { fake(XCB_BUTTON_PRESS, button); }
    void releaseButton(int button) { fake(XCB_BUTTON_RELEASE, button); }
    void pressKey(int keycode) { fake(XCB_KEY_PRESS, keycode); }
    void releaseKey(int keycode) { fake(XCB_KEY_RELEASE, keycode); }

    /// What the display shows in `area`, 0xRRGGBB each.
    [[nodiscard]] Bitmap pixels(PixelRect area) const {
        xcb_connection_t* const x = connection_->get();
        const auto cookie =
            xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, root(), static_cast<std::int16_t>(area.x),
                          static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                          static_cast<std::uint16_t>(area.height), ~0u);
        const XcbOwned<xcb_get_image_reply_t> image(xcb_get_image_reply(x, cookie, nullptr));
        Bitmap bitmap(area.size());
        const auto* pixel = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
        for (int y = 0; y < area.height; ++y) {
            for (auto& target : bitmap.row(y))
                target = *pixel++ & 0xffffff;
        }
        return bitmap;
    }
    [[nodiscard]] std::uint32_t pixel(int x, int y) const { return pixels({x, y, 1, 1}).row(0)[0]; }

    /// The root's children from bottom to top.
    [[nodiscard]] std::vector<xcb_window_t> stacking() const {
        xcb_connection_t* const x = connection_->get();
        const XcbOwned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(x, xcb_query_tree(x, root()), nullptr));
        const auto* first = xcb_query_tree_children(tree.get());
        return {first, first + tree->children_len};
    }
    /// The windows that the window manager names in a property of the root.
    [[nodiscard]] std::vector<xcb_window_t> managed(const char* property) const {
        return x11_properties::values(*connection_, root(), connection_->atom(property));
    }
    void setText(xcb_window_t window, const char* property, const std::string& text) {
        xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window, connection_->atom(property),
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()), text.data());
        sync();
    }
    /// Waits until the server has carried out everything so far.
    void sync() const { static_cast<void>(focusedWindow()); }

private:
    void fake(std::uint8_t type, int detail, int x = 0, int y = 0) {
        xcb_test_fake_input(connection_->get(), type, static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME,
                            root(), static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
        sync();
    }

    std::unique_ptr<X11Connection> connection_;
};

} // namespace glimmerly

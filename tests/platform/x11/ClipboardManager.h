#pragma once

#include "platform/x11/X11Connection.h"

#include <future>
#include <string>
#include <thread>

namespace glimmerly {

/// A clipboard manager that is asked once to save the clipboard and then keeps its PNG picture. On a thread
/// of its own, because the program that asks waits for it.
class ClipboardManager {
public:
    ClipboardManager()
        : connection_(X11Connection::open().value()), window_(xcb_generate_id(connection_->get())) {
        xcb_connection_t* const x = connection_->get();
        xcb_create_window(x, XCB_COPY_FROM_PARENT, window_, connection_->root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(x, window_, connection_->atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME);
        static_cast<void>(connection_->atom("waits until the server has done all that"));
        thread_ = std::jthread([this] { serve(); });
    }
    ~ClipboardManager() {
        // Wakes the thread when nobody asked.
        xcb_client_message_event_t stop{};
        stop.response_type = XCB_CLIENT_MESSAGE;
        stop.format = 32;
        stop.window = window_;
        xcb_send_event(connection_->get(), 0, window_, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&stop));
        xcb_flush(connection_->get());
    }
    ClipboardManager(const ClipboardManager&) = delete;
    ClipboardManager& operator=(const ClipboardManager&) = delete;

    /// What it saved; waits until it was asked to.
    [[nodiscard]] std::string savedPng() { return saved_.get_future().get(); }

private:
    void serve() {
        xcb_connection_t* const x = connection_->get();
        xcb_selection_request_event_t asked{};
        while (const XcbOwned<xcb_generic_event_t> event{xcb_wait_for_event(x)}) {
            const int type = event->response_type & ~0x80;
            if (type == XCB_CLIENT_MESSAGE)
                return;
            if (type == XCB_SELECTION_REQUEST) {
                asked = reinterpret_cast<const xcb_selection_request_event_t&>(*event);
                xcb_convert_selection(x, window_, connection_->atom("CLIPBOARD"),
                                      connection_->atom("image/png"), connection_->atom("SAVED"), asked.time);
                xcb_flush(x);
            }
            if (type == XCB_SELECTION_NOTIFY) {
                answer(asked);
                saved_.set_value(property(connection_->atom("SAVED")));
                return;
            }
        }
    }
    void answer(const xcb_selection_request_event_t& request) {
        xcb_selection_notify_event_t done{};
        done.response_type = XCB_SELECTION_NOTIFY;
        done.time = request.time;
        done.requestor = request.requestor;
        done.selection = request.selection;
        done.target = request.target;
        done.property = request.property;
        xcb_send_event(connection_->get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&done));
        xcb_flush(connection_->get());
    }
    [[nodiscard]] std::string property(xcb_atom_t name) const {
        xcb_connection_t* const x = connection_->get();
        const auto cookie = xcb_get_property(x, 0, window_, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 1 << 24);
        const XcbOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(x, cookie, nullptr));
        return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
    }

    std::unique_ptr<X11Connection> connection_;
    xcb_window_t window_;
    std::promise<std::string> saved_;
    std::jthread thread_;
};

} // namespace glimmerly

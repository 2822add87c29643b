#pragma once

#include "tests/support/desktop/XcbClient.h"

#include <future>
#include <string>
#include <thread>

namespace glimmerly {

/// A clipboard manager that is asked once to save the clipboard and then keeps its PNG picture. On a thread
/// of its own, because the program that asks waits for it.
class ClipboardManager {
public:
    ClipboardManager() {
        xcb_set_selection_owner(client_.get(), window_, client_.atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME);
        client_.sync();
        thread_ = std::jthread([this] { serve(); });
    }
    ~ClipboardManager() {
        // Wakes the thread when nobody asked.
        xcb_client_message_event_t stop{};
        stop.response_type = XCB_CLIENT_MESSAGE;
        stop.format = 32;
        stop.window = window_;
        send(window_, stop);
    }
    ClipboardManager(const ClipboardManager&) = delete;
    ClipboardManager& operator=(const ClipboardManager&) = delete;

    /// What it saved; waits until it was asked to.
    [[nodiscard]] std::string savedPng() { return saved_.get_future().get(); }

private:
    void serve() {
        xcb_connection_t* const x = client_.get();
        xcb_selection_request_event_t asked{};
        while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(x)}) {
            const int type = event->response_type & ~0x80;
            if (type == XCB_CLIENT_MESSAGE)
                return;
            if (type == XCB_SELECTION_REQUEST) {
                asked = reinterpret_cast<const xcb_selection_request_event_t&>(*event);
                xcb_convert_selection(x, window_, client_.atom("CLIPBOARD"), client_.atom("image/png"),
                                      client_.atom("SAVED"), asked.time);
                xcb_flush(x);
            }
            if (type == XCB_SELECTION_NOTIFY) {
                answer(asked);
                saved_.set_value(client_.propertyBytes(window_, "SAVED"));
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
        send(request.requestor, done);
    }
    void send(xcb_window_t window, const auto& event) const {
        xcb_send_event(client_.get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&event));
        xcb_flush(client_.get());
    }

    XcbClient client_;
    xcb_window_t window_ = client_.open({.overrideRedirect = true});
    std::promise<std::string> saved_;
    std::jthread thread_;
};

} // namespace glimmerly

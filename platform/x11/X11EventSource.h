#pragma once

#include "platform/x11/X11Connection.h"

#include <QSocketNotifier>

#include <functional>

namespace glimmerly {

/// Hands each event of a connection to `handler` as the main loop turns, those included that arrive while a
/// reply is awaited, and sends the requests that still wait in XCB's buffer. When the server goes away it
/// falls silent. `connection` must outlive it.
class X11EventSource {
public:
    using Handler = std::function<void(const xcb_generic_event_t&)>;

    X11EventSource(X11Connection& connection, Handler handler);

    /// Handles what the server has sent so far, without waiting for the main loop.
    void catchUp();

private:
    enum class Reading { socket, queueOnly };
    void drain(Reading reading);

    X11Connection& connection_;
    Handler handler_;
    QSocketNotifier notifier_;
};

} // namespace glimmerly

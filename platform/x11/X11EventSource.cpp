#include "platform/x11/X11EventSource.h"

#include <QAbstractEventDispatcher>

namespace glimmerly {

X11EventSource::X11EventSource(X11Connection& connection, Handler handler)
    : connection_(connection), handler_(std::move(handler)),
      notifier_(xcb_get_file_descriptor(connection.get()), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { drain(Reading::socket); });
    // Waiting for a reply moves events from the socket into XCB's queue, where no notifier sees them. The
    // main loop tells of each turn by one of these signals, the first if it is about to wait.
    auto* const mainLoop = QAbstractEventDispatcher::instance();
    for (const auto turn : {&QAbstractEventDispatcher::aboutToBlock, &QAbstractEventDispatcher::awake})
        QObject::connect(mainLoop, turn, &notifier_, [this] {
            drain(Reading::queueOnly);
            xcb_flush(connection_.get());
        });
}

void X11EventSource::catchUp() {
    connection_.sync();
    drain(Reading::queueOnly);
}

void X11EventSource::drain(Reading reading) {
    auto* const poll = reading == Reading::socket ? xcb_poll_for_event : xcb_poll_for_queued_event;
    while (const XcbOwned<xcb_generic_event_t> event{poll(connection_.get())})
        handler_(*event);
    // A socket at its end stays readable: without this the main loop would spin.
    if (xcb_connection_has_error(connection_.get()))
        notifier_.setEnabled(false);
}

} // namespace glimmerly

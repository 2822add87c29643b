#include "platform/x11/X11Repainting.h"

#include <QEvent>
#include <QGuiApplication>

#include <utility>

namespace glimmerly {

namespace {

constexpr std::chrono::milliseconds interval{5};

/// Waits until the server has carried out what `x` has asked of it so far.
void finishRequests(xcb_connection_t* x) {
    const XcbOwned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
}

void finishRequestsOfQt() {
    if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        finishRequests(x11->connection());
}

std::uint8_t paintEventOf(xcb_connection_t* x) {
    const auto* extension = xcb_get_extension_data(x, &xcb_damage_id);
    if (extension == nullptr || !extension->present)
        return 0;
    const XcbOwned<xcb_damage_query_version_reply_t> version(
        xcb_damage_query_version_reply(x, xcb_damage_query_version(x, 1, 1), nullptr));
    return version ? static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY) : std::uint8_t{0};
}

} // namespace

X11Repainting::X11Repainting(const X11Connection& connection, Limits limits)
    : connection_(connection), limits_(limits), paintEvent_(paintEventOf(connection.get())) {
    timer_.setInterval(interval);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] { check(); });
    qGuiApp->installEventFilter(this);
}

bool X11Repainting::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide && watched->isWindowType())
        windowWent_ = Clock::now();
    return false;
}

void X11Repainting::whenDone(std::function<void()> task) {
    if (Clock::now() - windowWent_ > limits_.longest)
        return task();
    tasks_.push_back(std::move(task));
    if (!timer_.isActive())
        startWatching();
}

void X11Repainting::startWatching() {
    finishRequestsOfQt();
    if (paintEvent_ != 0) {
        xcb_connection_t* const x = connection_.get();
        damage_ = xcb_generate_id(x);
        xcb_damage_create(x, damage_, connection_.root(), XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
        finishRequests(x);
        takePaintEvents(); // a new damage object begins by reporting all of its window
    }
    lastPainting_ = {};
    timer_.start();
}

void X11Repainting::takePaintEvents() {
    xcb_connection_t* const x = connection_.get();
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(x)}) {
        if ((event->response_type & ~0x80) != paintEvent_ || damage_ == XCB_NONE)
            continue;
        lastPainting_ = Clock::now();
        xcb_damage_subtract(x, damage_, XCB_NONE, XCB_NONE); // so that the next one is reported too
    }
    xcb_flush(x);
}

bool X11Repainting::isDone() const {
    const auto now = Clock::now();
    const bool wasPainted = lastPainting_ > windowWent_;
    return now - windowWent_ > (wasPainted ? limits_.longest : limits_.longestWithoutPainting) ||
           (wasPainted && now - lastPainting_ > limits_.pause);
}

void X11Repainting::check() {
    takePaintEvents();
    if (!isDone())
        return;
    timer_.stop();
    if (damage_ != XCB_NONE) {
        xcb_damage_destroy(connection_.get(), std::exchange(damage_, XCB_NONE));
        xcb_flush(connection_.get());
    }
    for (const auto& task : std::exchange(tasks_, {}))
        task();
}

} // namespace glimmerly

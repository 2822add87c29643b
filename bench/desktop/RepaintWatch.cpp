#include "bench/desktop/RepaintWatch.h"

#include "bench/desktop/DamageExtension.h"

namespace glimmerly::bench {

namespace {

/// After so long without painting, a repaint is over.
constexpr std::chrono::milliseconds pause{5};

} // namespace

RepaintWatch::RepaintWatch(const XClient& client, xcb_window_t window)
    : client_(client), damageEvent_(damageEventOf(client)), damage_(xcb_generate_id(client.get())) {
    xcb_damage_create(client.get(), damage_, window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    client.sync();
}

RepaintWatch::~RepaintWatch() {
    xcb_damage_destroy(client_.get(), damage_);
    client_.sync();
}

std::optional<RepaintWatch::Repaint> RepaintWatch::repaintAfter(const std::function<void()>& action) const {
    while (nextPaintedBytes(pause)) {
    }
    Repaint repaint;
    const Stopwatch watch;
    action();
    auto bytes = nextPaintedBytes(std::chrono::seconds(1));
    if (!bytes)
        return std::nullopt;
    for (repaint.first = watch.milliseconds(); bytes; bytes = nextPaintedBytes(pause)) {
        repaint.last = watch.milliseconds();
        repaint.bytes += *bytes;
    }
    return repaint;
}

std::optional<double> RepaintWatch::nextPaintedBytes(std::chrono::milliseconds limit) const {
    while (const auto event = client_.nextEvent(limit)) {
        if ((event->response_type & 0x7F) != damageEvent_)
            continue;
        const auto& area = reinterpret_cast<const xcb_damage_notify_event_t&>(*event).area;
        return 4.0 * area.width * area.height;
    }
    return std::nullopt;
}

} // namespace glimmerly::bench

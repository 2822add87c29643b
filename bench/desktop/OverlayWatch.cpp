#include "bench/desktop/OverlayWatch.h"

#include "bench/desktop/DamageExtension.h"
#include "tests/support/desktop/WaitUntil.h"

#include <xcb/damage.h>

namespace glimmerly::bench {

namespace {

constexpr double enough = 0.9;

} // namespace

OverlayWatch::OverlayWatch(const XClient& client)
    : client_(client), damageEvent_(damageEventOf(client)),
      screenArea_(double(client.size().width) * client.size().height) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(client.get(), client.root(), XCB_CW_EVENT_MASK, &mask);
    client.sync();
}

std::optional<OverlayWatch::Times> OverlayWatch::waitForOverlay(const Stopwatch& watch) {
    while (watch.milliseconds() < std::chrono::milliseconds(patience).count()) {
        const auto event = client_.nextEvent(std::chrono::milliseconds(100));
        if (event)
            handle(*event, watch);
        for (const auto& [id, window] : windows_) {
            if (window.mappedAt && window.painted >= enough * screenArea_)
                return Times{.mapped = *window.mappedAt, .painted = watch.milliseconds()};
        }
    }
    return std::nullopt;
}

void OverlayWatch::waitForRest() {
    while (const auto event = client_.nextEvent(std::chrono::milliseconds(100)))
        handle(*event, {});
    for (auto& [id, window] : windows_) {
        window = {.damage = window.damage, .painted = 0, .mappedAt = std::nullopt};
        xcb_damage_subtract(client_.get(), window.damage, XCB_NONE, XCB_NONE); // so that it is reported again
    }
    client_.sync();
}

void OverlayWatch::handle(const xcb_generic_event_t& event, const Stopwatch& watch) {
    const int type = event.response_type & 0x7F;
    if (type == XCB_CREATE_NOTIFY) {
        watchPainting(reinterpret_cast<const xcb_create_notify_event_t&>(event).window);
    } else if (type == XCB_DESTROY_NOTIFY) {
        windows_.erase(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    } else if (type == XCB_MAP_NOTIFY) {
        const auto id = reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
        const auto area = client_.areaOf(id);
        if (double(area.width) * area.height >= enough * screenArea_)
            windows_[id].mappedAt = watch.milliseconds();
    } else if (type == damageEvent_) {
        const auto& damage = reinterpret_cast<const xcb_damage_notify_event_t&>(event);
        windows_[damage.drawable].painted += double(damage.area.width) * damage.area.height;
    }
}

void OverlayWatch::watchPainting(xcb_window_t window) {
    // Delta rectangles name each pixel once, so that their areas add up to what is covered.
    const xcb_damage_damage_t damage = xcb_generate_id(client_.get());
    windows_[window].damage = damage;
    xcb_damage_create(client_.get(), damage, window, XCB_DAMAGE_REPORT_LEVEL_DELTA_RECTANGLES);
    client_.sync();
}

} // namespace glimmerly::bench

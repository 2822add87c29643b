#pragma once

#include "bench/desktop/Stopwatch.h"
#include "tests/support/desktop/XClient.h"

#include <xcb/damage.h>

#include <map>
#include <optional>

namespace glimmerly::bench {

/// Watches, from outside, the next window that covers the screen come up.
class OverlayWatch {
public:
    struct Times {
        double mapped = 0;  ///< milliseconds
        double painted = 0; ///< milliseconds, until nine tenths of the screen are painted
    };

    explicit OverlayWatch(const XClient& client);

    /// Waits for a window that is mapped after `waitForRest`; none after fifteen seconds.
    [[nodiscard]] std::optional<Times> waitForOverlay(const Stopwatch& watch);
    /// Waits until nothing has been painted for 100 milliseconds, and forgets what was.
    void waitForRest();

private:
    /// What is known of a window that came after this object. The program keeps its overlay's for the next
    /// one.
    struct Window {
        xcb_damage_damage_t damage = XCB_NONE;
        double painted = 0; ///< pixels painted so far, each counted once
        std::optional<double> mappedAt;
    };

    void handle(const xcb_generic_event_t& event, const Stopwatch& watch);
    void watchPainting(xcb_window_t window);

    const XClient& client_;
    std::uint8_t damageEvent_;
    double screenArea_;
    std::map<xcb_window_t, Window> windows_;
};

} // namespace glimmerly::bench

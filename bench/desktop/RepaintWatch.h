#pragma once

#include "bench/desktop/Stopwatch.h"
#include "tests/support/desktop/XClient.h"

#include <xcb/damage.h>

#include <functional>
#include <optional>

namespace glimmerly::bench {

/// Watches, from outside, what a window paints.
class RepaintWatch {
public:
    struct Repaint {
        double first = 0; ///< milliseconds until the first of it reached the screen
        double last = 0;  ///< milliseconds until all of it had
        double bytes = 0; ///< of pixels, those painted twice counted twice
    };

    RepaintWatch(const XClient& client, xcb_window_t window);
    ~RepaintWatch();
    RepaintWatch(const RepaintWatch&) = delete;
    RepaintWatch& operator=(const RepaintWatch&) = delete;

    /// What the window paints because of `action`; none when nothing comes within a second.
    [[nodiscard]] std::optional<Repaint> repaintAfter(const std::function<void()>& action) const;

private:
    [[nodiscard]] std::optional<double> nextPaintedBytes(std::chrono::milliseconds limit) const;

    const XClient& client_;
    std::uint8_t damageEvent_;
    xcb_damage_damage_t damage_;
};

} // namespace glimmerly::bench

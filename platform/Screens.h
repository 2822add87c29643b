#pragma once

#include "base/Geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace glimmerly {

/// One display as windows see it.
struct Screen {
    std::string name;                       ///< the output's name, as in "DP-1"
    std::optional<std::uint32_t> displayID; ///< the capture service's number for it, when it has one
    Rect frame;                             ///< in global points, y upwards from the first screen's bottom
    double backingScale = 1;                ///< pixels per point, any fraction
    PixelRect nativeFrame;                  ///< in the window server's pixels, y downwards

    bool operator==(const Screen&) const = default;
};

/// The displays of this desktop and the mouse on them.
class Screens {
public:
    virtual ~Screens() = default;

    /// In the platform's order; empty when there is no display at all.
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;
    [[nodiscard]] virtual std::optional<Screen> mainScreen() const = 0;
    /// In global points, y upwards.
    [[nodiscard]] virtual Point mouseLocation() const = 0;
};

} // namespace glimmerly

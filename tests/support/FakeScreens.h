#pragma once

#include "platform/Screens.h"

namespace glimmerly {

/// Displays as a test lays them out.
class FakeScreens : public Screens {
public:
    FakeScreens() = default;
    explicit FakeScreens(std::vector<Screen> screens) : all(std::move(screens)) {
        if (!all.empty())
            main = all.front();
    }

    /// One display of `size` pixels at the origin, with display number `displayID`.
    [[nodiscard]] static Screen display(PixelSize size, double scale = 1, std::uint32_t displayID = 1) {
        return {"FAKE-" + std::to_string(displayID), displayID,
                Rect{0, 0, size.width / scale, size.height / scale}, scale,
                PixelRect{0, 0, size.width, size.height}};
    }

    [[nodiscard]] std::vector<Screen> screens() const override { return all; }
    [[nodiscard]] std::optional<Screen> mainScreen() const override { return main; }
    [[nodiscard]] Point mouseLocation() const override { return mouse; }

    std::vector<Screen> all;
    std::optional<Screen> main;
    Point mouse;
};

} // namespace glimmerly

#include "capture/service/TargetScreen.h"

#include <algorithm>

namespace glimmerly {

std::optional<Screen> targetScreen(const Screens& screens) {
    const Point mouse = screens.mouseLocation();
    const auto all = screens.screens();
    const auto hit = std::ranges::find_if(all, [&](const Screen& s) { return s.frame.contains(mouse); });
    if (hit != all.end())
        return *hit;
    if (auto main = screens.mainScreen())
        return main;
    return all.empty() ? std::nullopt : std::optional(all.front());
}

} // namespace glimmerly

#pragma once

#include "tests/support/desktop/Robot.h"
#include "tests/support/desktop/XClient.h"

#include <optional>

namespace glimmerly::e2e {

/// Where the program's icon is in the panel; none while it is not there.
inline std::optional<Pixel> trayIconPlace(const XClient& client) {
    for (const auto window : client.windowsWith("_XEMBED_INFO")) {
        const auto area = client.areaOf(window);
        if (area.width > 4 && area.x > 0 && area.y > 0)
            return Pixel{area.x + area.width / 2, area.y + area.height / 2};
    }
    return std::nullopt;
}

} // namespace glimmerly::e2e

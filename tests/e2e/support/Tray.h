#pragma once

#include "tests/e2e/support/Session.h"

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

/// The screen but the panel.
inline PixelRect abovePanel(const XClient& client) {
    return {0, 0, client.size().width, client.size().height - 40};
}

/// Opens the menu at the icon, which it waits for, goes to an item with `steps`, and chooses it.
inline void chooseFromTray(const Session& session, const std::vector<Key>& steps) {
    const auto& client = session.desktop.client();
    ASSERT_TRUE(waitUntil([&] { return trayIconPlace(client).has_value(); })) << "no icon in the panel";
    const auto before = client.pixels(abovePanel(client));
    session.robot.click(*trayIconPlace(client), 3);
    ASSERT_TRUE(waitUntil([&] { return client.pixels(abovePanel(client)) != before; })) << "no menu";
    for (const Key step : steps)
        session.robot.type({step});
    session.robot.type({Key::returnKey});
}

} // namespace glimmerly::e2e

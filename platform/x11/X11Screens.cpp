#include "platform/x11/X11Screens.h"

#include "platform/x11/X11Displays.h"

#include <QGuiApplication>
#include <QScreen>
#include <qpa/qplatformscreen.h>

#include <algorithm>
#include <limits>

namespace glimmerly {

namespace {

bool contains(PixelRect area, int x, int y) {
    return x >= area.x && x < area.x + area.width && y >= area.y && y < area.y + area.height;
}

/// `screen` with y still downwards in its frame.
Screen describe(const QScreen& screen, const std::vector<X11Display>& displays) {
    Screen described;
    described.name = screen.name().toStdString();
    described.backingScale = screen.devicePixelRatio();
    const QRect native = screen.handle()->geometry();
    described.nativeFrame = {native.x(), native.y(), native.width(), native.height()};
    // Without RandR the only display has a different name for Qt.
    const auto known = std::ranges::find_if(displays, [&](const X11Display& display) {
        return display.name == described.name || displays.size() == 1;
    });
    if (known != displays.end()) {
        described.displayID = known->id;
        described.nativeFrame = known->area;
    }
    described.frame = {static_cast<double>(described.nativeFrame.x),
                       static_cast<double>(described.nativeFrame.y),
                       described.nativeFrame.width / described.backingScale,
                       described.nativeFrame.height / described.backingScale};
    return described;
}

} // namespace

X11Screens::X11Screens(std::unique_ptr<X11Connection> connection) : connection_(std::move(connection)) {}

std::vector<Screen> X11Screens::screens() const {
    const auto displays = x11Displays(*connection_);
    std::vector<Screen> all;
    for (const QScreen* screen : QGuiApplication::screens())
        all.push_back(describe(*screen, displays));
    if (all.empty())
        return all;
    const double bottom = all.front().frame.maxY();
    for (Screen& screen : all)
        screen.frame.y = bottom - screen.frame.maxY();
    return all;
}

std::optional<Screen> X11Screens::mainScreen() const {
    const auto all = screens();
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (all.empty() || primary == nullptr)
        return std::nullopt;
    const auto found = std::ranges::find(all, primary->name().toStdString(), &Screen::name);
    return found == all.end() ? all.front() : *found;
}

Point X11Screens::mouseLocation() const {
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    xcb_connection_t* const x = connection_->get();
    const XcbOwned<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(x, xcb_query_pointer(x, connection_->root()), nullptr));
    const auto all = screens();
    if (!pointer || all.empty())
        return {nowhere, nowhere};
    const int px = pointer->root_x;
    const int py = pointer->root_y;
    const auto under =
        std::ranges::find_if(all, [&](const Screen& screen) { return contains(screen.nativeFrame, px, py); });
    const Screen& screen = under == all.end() ? all.front() : *under;
    const int rowsBelow = screen.nativeFrame.y + screen.nativeFrame.height - (py + 1);
    return {screen.frame.minX() + (px - screen.nativeFrame.x) / screen.backingScale,
            screen.frame.minY() + rowsBelow / screen.backingScale};
}

} // namespace glimmerly

#include "platform/x11/X11OverlayWindows.h"

#include "platform/x11/X11Displays.h"
#include "platform/x11/X11Focus.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <xcb/shape.h>

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

/// Tells a compositor to go on composing under a window that covers a display: switching that off and on
/// again flickers.
constexpr std::uint32_t keepCompositing = 2;

QScreen* qtScreen(const Screen& screen) {
    const auto all = QGuiApplication::screens();
    const auto found = std::ranges::find(all, QString::fromStdString(screen.name), &QScreen::name);
    return found == all.end() ? QGuiApplication::primaryScreen() : *found;
}

/// The overlay of `heightPoints` on the root window, in pixels.
PixelRect overlayArea(const Screen& screen, double heightPoints) {
    PixelRect area = screen.nativeFrame;
    const Overhang beyond = overhang(heightPoints, screen.backingScale, area.height);
    area.y -= beyond.top;
    area.height += beyond.total();
    return area;
}

/// The smallest whole number of points that covers `pixels`.
int pointsCovering(int pixels, double scale) {
    constexpr double tolerance = 1e-6;
    return static_cast<int>(std::ceil(pixels / scale - tolerance));
}

} // namespace

X11OverlayWindows::X11OverlayWindows(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)), heldKeys_(*connection_),
      events_(*connection_, [this](const xcb_generic_event_t& event) { handle(event); }) {
    selectDisplayChanges(*connection_);
}

void X11OverlayWindows::handle(const xcb_generic_event_t& event) {
    heldKeys_.handle(event);
    if (!keeper_)
        return;
    keeper_->handle(event);
    if (isDisplayChange(*connection_, event))
        followDisplay();
}

void X11OverlayWindows::prepare(QWidget& window, const Screen& screen, Rect frame) {
    area_ = overlayArea(screen, frame.height);
    displayName_ = screen.name;
    rowsAboveDisplay_ = screen.nativeFrame.y - area_.y;
    window.setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    QScreen* target = qtScreen(screen);
    window.setScreen(target);
    const double scale = target->devicePixelRatio();
    const QSize points(pointsCovering(area_.width, scale), pointsCovering(area_.height, scale));
    window.setGeometry({target->geometry().topLeft(), points});
    const QSize pixels = points * scale; // rounded as Qt does it
    place(static_cast<xcb_window_t>(window.winId()), area_, {pixels.width(), pixels.height()});
}

/// Qt knows whole points only: its window starts on a point and may be a pixel too large. This puts it on its
/// pixel and cuts off what is beyond `area`.
void X11OverlayWindows::place(xcb_window_t window, PixelRect area, PixelSize sizeForQt) {
    xcb_connection_t* const x = connection_->get();
    const std::uint32_t origin[] = {static_cast<std::uint32_t>(area.x), static_cast<std::uint32_t>(area.y)};
    xcb_configure_window(x, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, origin);
    if (sizeForQt != area.size()) {
        const xcb_rectangle_t visible{0, 0, static_cast<std::uint16_t>(area.width),
                                      static_cast<std::uint16_t>(area.height)};
        xcb_shape_rectangles(x, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED, window,
                             0, 0, 1, &visible);
    }
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, connection_->atom("_NET_WM_BYPASS_COMPOSITOR"),
                        XCB_ATOM_CARDINAL, 32, 1, &keepCompositing);
    xcb_flush(x);
}

/// What has been drawn must stay within reach whatever is plugged in or out meanwhile.
void X11OverlayWindows::followDisplay() {
    const auto displays = x11Displays(*connection_);
    if (displays.empty())
        return;
    const auto own = std::ranges::find(displays, displayName_, &X11Display::name);
    const PixelRect display = (own == displays.end() ? displays.front() : *own).area;
    area_.x = display.x;
    area_.y = display.y - rowsAboveDisplay_;
    keeper_->moveTo(area_);
}

void X11OverlayWindows::makeKeyAndOrderFront(QWidget& window) {
    focusBefore_ = x11_focus::current(*connection_);
    keeper_.emplace(*connection_, static_cast<xcb_window_t>(window.winId()), area_);
    keeper_->orderFront();
    window.show(); // Qt waits until the server has mapped it
    // Qt asks for a first paint by an event that may come after the one that paints: then it would paint
    // twice.
    QCoreApplication::sendPostedEvents(&window, QEvent::UpdateLater);
    heldKeys_.letGo();
    keeper_->takeFocus();
}

bool X11OverlayWindows::orderOut(QWidget& window) {
    keeper_.reset();
    const bool hadKeyboard = x11_focus::current(*connection_) == window.winId();
    if (hadKeyboard) {
        heldKeys_.swallowUntilReleased();
        x11_focus::set(*connection_, focusBefore_);
    }
    window.hide();
    return hadKeyboard;
}

} // namespace glimmerly

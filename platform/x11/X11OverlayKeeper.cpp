#include "platform/x11/X11OverlayKeeper.h"

#include "platform/x11/X11Focus.h"
#include "platform/x11/X11Properties.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace glimmerly {

namespace {

bool isRealFocusChange(const xcb_focus_out_event_t& event) {
    const bool keyboardTakenForAWhile =
        event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB;
    return !keyboardTakenForAWhile && event.detail != XCB_NOTIFY_DETAIL_POINTER &&
           event.detail != XCB_NOTIFY_DETAIL_INFERIOR;
}

} // namespace

bool X11Patience::lasts() {
    constexpr int mostWithinASecond = 10;
    const auto now = Clock::now();
    if (count_ < mostWithinASecond && now - countingSince_ > std::chrono::seconds(1)) {
        countingSince_ = now;
        count_ = 0;
    }
    if (count_ == mostWithinASecond)
        return false;
    ++count_;
    return true;
}

X11OverlayKeeper::X11OverlayKeeper(const X11Connection& connection, xcb_window_t overlay, PixelRect area)
    : connection_(connection), windowState_(connection.atom("WM_STATE")), overlay_(overlay), area_(area) {
    settling_.setSingleShot(true);
    settling_.callOnTimeout([this] { settle(); });
    // Not the overlay's own visibility: a window that reaches beyond the root counts as covered from the
    // start.
    selectEvents(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_ENTER_WINDOW);
}

X11OverlayKeeper::~X11OverlayKeeper() {
    selectEvents(XCB_EVENT_MASK_NO_EVENT, XCB_EVENT_MASK_NO_EVENT);
}

void X11OverlayKeeper::selectEvents(std::uint32_t onRoot, std::uint32_t onOverlay) const {
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &onRoot);
    xcb_change_window_attributes(connection_.get(), overlay_, XCB_CW_EVENT_MASK, &onOverlay);
    xcb_flush(connection_.get());
}

void X11OverlayKeeper::orderFront() const {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_.get(), overlay_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(connection_.get());
}

void X11OverlayKeeper::moveTo(PixelRect area) {
    area_ = area;
    const std::uint32_t origin[] = {static_cast<std::uint32_t>(area.x), static_cast<std::uint32_t>(area.y)};
    xcb_configure_window(connection_.get(), overlay_, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, origin);
    xcb_flush(connection_.get());
}

void X11OverlayKeeper::takeFocus() const {
    x11_focus::set(connection_, overlay_);
}

void X11OverlayKeeper::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & ~0x80) {
    case XCB_MAP_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
    case XCB_REPARENT_NOTIFY:
        stackChanged_ = true;
        break;
    case XCB_FOCUS_OUT:
        if (!isRealFocusChange(reinterpret_cast<const xcb_focus_out_event_t&>(event)))
            return;
        [[fallthrough]];
    case XCB_ENTER_NOTIFY:
        focusChanged_ = true;
        break;
    default:
        return;
    }
    settling_.start(0);
}

void X11OverlayKeeper::settle() {
    if (std::exchange(stackChanged_, false))
        raiseAboveOthers();
    if (std::exchange(focusChanged_, false) && !mayHaveFocus(x11_focus::current(connection_)) &&
        hasPointer() && focusing_.lasts())
        takeFocus();
}

void X11OverlayKeeper::raiseAboveOthers() {
    const auto isBeatable = [this](xcb_window_t window) { return !std::ranges::count(unbeatable_, window); };
    if (!std::ranges::any_of(coveringWindows(), isBeatable) || !raising_.lasts())
        return;
    orderFront();
    unbeatable_ = coveringWindows();
}

/// The overlay, and windows of ours that were opened over it: those below it cannot be seen, and the pointer
/// has left those beside it.
bool X11OverlayKeeper::mayHaveFocus(xcb_window_t window) const {
    if (window == overlay_ || !isOurs(window))
        return window == overlay_;
    const auto bottomToTop = children(connection_.root());
    const auto aboveOverlay = std::ranges::find(bottomToTop, overlay_);
    const xcb_window_t outermost = ancestorOnRoot(window);
    return std::ranges::find(aboveOverlay, bottomToTop.end(), outermost) != bottomToTop.end() &&
           covers(outermost);
}

/// `window` itself, or the window manager's frame around it.
xcb_window_t X11OverlayKeeper::ancestorOnRoot(xcb_window_t window) const {
    xcb_connection_t* const x = connection_.get();
    for (;;) {
        const XcbOwned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(x, xcb_query_tree_unchecked(x, window), nullptr));
        if (!tree || tree->parent == XCB_NONE || tree->parent == connection_.root())
            return window;
        window = tree->parent;
    }
}

bool X11OverlayKeeper::isOurs(xcb_window_t window) const {
    const std::uint32_t client = ~xcb_get_setup(connection_.get())->resource_id_mask;
    return (window & client) == (overlay_ & client);
}

std::vector<xcb_window_t> X11OverlayKeeper::children(xcb_window_t window) const {
    xcb_connection_t* const x = connection_.get();
    const XcbOwned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x, xcb_query_tree_unchecked(x, window), nullptr));
    if (!tree)
        return {};
    const std::span bottomToTop(xcb_query_tree_children(tree.get()), tree->children_len);
    return {bottomToTop.begin(), bottomToTop.end()};
}

/// Other clients' windows over the overlay but for their popups; our own tooltips belong there.
std::vector<xcb_window_t> X11OverlayKeeper::coveringWindows() const {
    const auto bottomToTop = children(connection_.root());
    std::vector<xcb_window_t> covering;
    std::copy_if(std::ranges::find(bottomToTop, overlay_), bottomToTop.end(), std::back_inserter(covering),
                 [this](xcb_window_t window) { return !isOurs(window) && covers(window); });
    return covering;
}

bool X11OverlayKeeper::covers(xcb_window_t window) const {
    xcb_connection_t* const x = connection_.get();
    const auto attributesCookie = xcb_get_window_attributes_unchecked(x, window);
    const auto geometryCookie = xcb_get_geometry_unchecked(x, window);
    const XcbOwned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x, attributesCookie, nullptr));
    const XcbOwned<xcb_get_geometry_reply_t> place(xcb_get_geometry_reply(x, geometryCookie, nullptr));
    if (!attributes || !place || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
        return false;
    // Such as what an input method offers for the text being typed, or a notification.
    if (attributes->override_redirect != 0 && !holdsApplicationWindow(window))
        return false;
    const int border = 2 * place->border_width;
    return place->x < area_.x + area_.width && place->x + place->width + border > area_.x &&
           place->y < area_.y + area_.height && place->y + place->height + border > area_.y;
}

/// A window manager's frame is unmanaged too, like a popup; what is inside tells it apart.
bool X11OverlayKeeper::holdsApplicationWindow(xcb_window_t window) const {
    return x11_properties::value(connection_, window, windowState_) != 0 ||
           std::ranges::any_of(children(window),
                               [this](xcb_window_t child) { return holdsApplicationWindow(child); });
}

bool X11OverlayKeeper::hasPointer() const {
    xcb_connection_t* const x = connection_.get();
    const XcbOwned<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(x, xcb_query_pointer(x, connection_.root()), nullptr));
    return pointer && pointer->root_x >= area_.x && pointer->root_x < area_.x + area_.width &&
           pointer->root_y >= area_.y && pointer->root_y < area_.y + area_.height;
}

} // namespace glimmerly

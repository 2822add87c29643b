#include "platform/x11/X11ClientWindows.h"

#include "platform/x11/X11Focus.h"
#include "platform/x11/X11Properties.h"
#include "platform/x11/X11ServerTime.h"

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <span>

namespace glimmerly {

namespace {

/// "Source indication" of a message to the window manager: a direct wish of the user's, so that it is not
/// taken for an application that pushes itself forward.
constexpr std::uint32_t sourceUser = 2;

std::string thisMachine() {
    char name[HOST_NAME_MAX + 1] = {};
    ::gethostname(name, sizeof name - 1);
    return name;
}

/// The class, the second of the two zero-terminated texts of WM_CLASS.
std::string classOf(const std::string& instanceAndClass) {
    const auto zero = instanceAndClass.find('\0');
    return zero == std::string::npos ? std::string() : std::string(instanceAndClass.c_str() + zero + 1);
}

} // namespace

bool X11WindowOwner::isSameApplicationAs(const X11WindowOwner& other) const {
    return (leader != XCB_WINDOW_NONE && leader == other.leader) ||
           (process != 0 && process == other.process && machine == other.machine);
}

bool X11WindowOwner::isThisProcess() const {
    return process == static_cast<std::uint32_t>(::getpid()) && (machine.empty() || machine == thisMachine());
}

X11ClientWindows::Atoms::Atoms(const X11Connection& connection)
    : supportingCheck(connection.atom("_NET_SUPPORTING_WM_CHECK")),
      activeWindow(connection.atom("_NET_ACTIVE_WINDOW")),
      stacking(connection.atom("_NET_CLIENT_LIST_STACKING")), restack(connection.atom("_NET_RESTACK_WINDOW")),
      process(connection.atom("_NET_WM_PID")), leader(connection.atom("WM_CLIENT_LEADER")),
      desktopFile(connection.atom("_KDE_NET_WM_DESKTOP_FILE")),
      gtkApplication(connection.atom("_GTK_APPLICATION_ID")) {}

X11ClientWindows::X11ClientWindows(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)), atoms_(*connection_) {}

bool X11ClientWindows::hasWindowManager() const {
    // One that was killed leaves its property on the root, but not the window that it names.
    const auto check = x11_properties::value(*connection_, connection_->root(), atoms_.supportingCheck);
    return check != XCB_WINDOW_NONE &&
           x11_properties::value(*connection_, check, atoms_.supportingCheck) == check;
}

xcb_window_t X11ClientWindows::active() const {
    if (hasWindowManager())
        return x11_properties::value(*connection_, connection_->root(), atoms_.activeWindow);
    return topLevel(x11_focus::current(*connection_)); // a focus on the pointer is on no window
}

std::vector<xcb_window_t> X11ClientWindows::stacking() const {
    if (hasWindowManager())
        return x11_properties::values(*connection_, connection_->root(), atoms_.stacking);
    auto windows = children(connection_->root());
    std::erase_if(windows, [this](xcb_window_t window) {
        const auto cookie = xcb_get_window_attributes_unchecked(connection_->get(), window);
        const XcbOwned<xcb_get_window_attributes_reply_t> reply(
            xcb_get_window_attributes_reply(connection_->get(), cookie, nullptr));
        return !reply || reply->override_redirect != 0 || reply->map_state != XCB_MAP_STATE_VIEWABLE;
    });
    return windows;
}

X11WindowOwner X11ClientWindows::owner(xcb_window_t window) const {
    using namespace x11_properties;
    X11WindowOwner owner{.process = value(*connection_, window, atoms_.process),
                         .machine = text(*connection_, window, XCB_ATOM_WM_CLIENT_MACHINE),
                         .leader = value(*connection_, window, atoms_.leader),
                         .application = text(*connection_, window, atoms_.desktopFile)};
    if (owner.application.empty())
        owner.application = text(*connection_, window, atoms_.gtkApplication);
    if (owner.application.empty())
        owner.application = classOf(text(*connection_, window, XCB_ATOM_WM_CLASS));
    return owner;
}

bool X11ClientWindows::isOnScreen(xcb_window_t window) const {
    const auto cookie = xcb_get_window_attributes_unchecked(connection_->get(), window);
    const XcbOwned<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(connection_->get(), cookie, nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

xcb_window_t X11ClientWindows::focusWithin(xcb_window_t window) const {
    const xcb_window_t focus = x11_focus::current(*connection_);
    for (xcb_window_t at = focus; at != XCB_WINDOW_NONE; at = parent(at)) {
        if (at == window)
            return focus;
    }
    return XCB_WINDOW_NONE;
}

void X11ClientWindows::setFocus(xcb_window_t window) const {
    x11_focus::set(*connection_, window);
}

void X11ClientWindows::raise(xcb_window_t window) const {
    if (hasWindowManager()) {
        tellWindowManager(window, atoms_.restack, {sourceUser, XCB_WINDOW_NONE, XCB_STACK_MODE_ABOVE});
        return;
    }
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_->get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(connection_->get());
}

void X11ClientWindows::activate(xcb_window_t window) const {
    if (hasWindowManager())
        tellWindowManager(window, atoms_.activeWindow,
                          {sourceUser, serverTime(*connection_), XCB_WINDOW_NONE});
    else
        x11_focus::set(*connection_, window);
}

void X11ClientWindows::tellWindowManager(xcb_window_t window, xcb_atom_t message,
                                         std::array<std::uint32_t, 3> data) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = message;
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(connection_->get(), 0, connection_->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(connection_->get());
}

std::vector<xcb_window_t> X11ClientWindows::children(xcb_window_t window) const {
    const auto cookie = xcb_query_tree_unchecked(connection_->get(), window);
    const XcbOwned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection_->get(), cookie, nullptr));
    if (!tree)
        return {};
    const std::span all(xcb_query_tree_children(tree.get()), tree->children_len);
    return {all.begin(), all.end()};
}

xcb_window_t X11ClientWindows::parent(xcb_window_t window) const {
    const auto cookie = xcb_query_tree_unchecked(connection_->get(), window);
    const XcbOwned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection_->get(), cookie, nullptr));
    return tree ? tree->parent : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

/// The child of the root that `window` is or lies in; XCB_WINDOW_NONE for the root itself.
xcb_window_t X11ClientWindows::topLevel(xcb_window_t window) const {
    for (xcb_window_t at = window; at != XCB_WINDOW_NONE;) {
        const xcb_window_t above = parent(at);
        if (above == connection_->root())
            return at;
        at = above;
    }
    return XCB_WINDOW_NONE;
}

} // namespace glimmerly

#include "platform/x11/X11KeyboardExtension.h"

#include <xkbcommon/xkbcommon-x11.h>

namespace glimmerly {

namespace {

void selectChanges(xcb_connection_t* connection) {
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                     XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                       XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                       XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.newKeyboardDetails = details.affectNewKeyboard;
    // Not the modifiers: pressing Shift must wake nobody.
    details.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
    details.stateDetails = details.affectState;
    xcb_xkb_select_events_aux(connection, XCB_XKB_ID_USE_CORE_KBD, events, 0, 0, mapParts, mapParts,
                              &details);
}

} // namespace

Result<X11KeyboardExtension> X11KeyboardExtension::enable(X11Connection& connection) {
    std::uint8_t eventType = 0;
    const int ready = xkb_x11_setup_xkb_extension(
        connection.get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
        XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &eventType, nullptr);
    if (!ready)
        return failure({"X11", -1, "The X server has no keyboard extension."});
    selectChanges(connection.get());
    xcb_flush(connection.get());
    return X11KeyboardExtension(eventType);
}

std::optional<X11KeyboardExtension::Change>
X11KeyboardExtension::change(const xcb_generic_event_t& event) const {
    const int type = event.response_type & 0x7F;
    if (type == XCB_MAPPING_NOTIFY)
        return Change::keymap;
    if (type != eventType_)
        return {};
    // Every event of the extension has one type; which it is stands where core events have their detail.
    switch (event.pad0) {
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
        return Change::keymap;
    case XCB_XKB_STATE_NOTIFY:
        return Change::group;
    default:
        return {};
    }
}

} // namespace glimmerly

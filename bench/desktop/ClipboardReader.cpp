#include "bench/desktop/ClipboardReader.h"

#include "tests/support/desktop/WaitUntil.h"

#include <xcb/xfixes.h>

namespace glimmerly::bench {

ClipboardReader::ClipboardReader(const XClient& client)
    : client_(client), selectionEvent_(xcb_get_extension_data(client.get(), &xcb_xfixes_id)->first_event),
      window_(xcb_generate_id(client.get())), clipboard_(client.atom("CLIPBOARD")),
      png_(client.atom("image/png")), property_(client.atom("GLIMMERLY_BENCH")) {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(client.get(), 0, window_, client.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0,
                      XCB_CW_EVENT_MASK, &mask);
    const Reply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(client.get(), xcb_xfixes_query_version(client.get(), 5, 0), nullptr));
    xcb_xfixes_select_selection_input(client.get(), window_, clipboard_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    client.sync();
}

ClipboardReader::~ClipboardReader() {
    xcb_destroy_window(client_.get(), window_);
}

void ClipboardReader::arm() const {
    client_.sync();
    while (client_.nextEvent({})) {
    }
}

std::optional<ClipboardReader::Times> ClipboardReader::waitForPicture(const Stopwatch& watch) const {
    Times times;
    const auto ownerChanged = [this](const xcb_generic_event_t& event) {
        return (event.response_type & 0x7F) == selectionEvent_ &&
               reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event).owner != XCB_NONE;
    };
    if (!waitForEvent(ownerChanged))
        return std::nullopt;
    times.owned = watch.milliseconds();
    const auto bytes = readPicture();
    times.read = watch.milliseconds();
    times.bytes = bytes.value_or(0);
    return bytes ? std::optional(times) : std::nullopt;
}

std::optional<std::size_t> ClipboardReader::readPicture() const {
    xcb_convert_selection(client_.get(), window_, clipboard_, png_, property_, XCB_CURRENT_TIME);
    xcb_flush(client_.get());
    const auto isAnswer = [](const xcb_generic_event_t& event) {
        return (event.response_type & 0x7F) == XCB_SELECTION_NOTIFY;
    };
    if (!waitForEvent(isAnswer))
        return std::nullopt;
    xcb_atom_t type = XCB_NONE;
    std::size_t bytes = takeProperty(type);
    if (type != client_.atom("INCR"))
        return type == png_ ? std::optional(bytes) : std::nullopt;

    const auto isPiece = [this](const xcb_generic_event_t& event) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        return (event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY && property.atom == property_ &&
               property.state == XCB_PROPERTY_NEW_VALUE;
    };
    bytes = 0;
    while (waitForEvent(isPiece)) {
        const auto piece = takeProperty(type);
        if (piece == 0)
            return bytes;
        bytes += piece;
    }
    return std::nullopt;
}

std::size_t ClipboardReader::takeProperty(xcb_atom_t& type) const {
    constexpr std::uint32_t everything = 64U << 20U;
    const auto cookie =
        xcb_get_property(client_.get(), 1, window_, property_, XCB_GET_PROPERTY_TYPE_ANY, 0, everything);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(client_.get(), cookie, nullptr));
    type = reply ? reply->type : XCB_NONE;
    return reply ? static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) : 0;
}

template <typename Condition>
bool ClipboardReader::waitForEvent(Condition matches) const {
    while (const auto event = client_.nextEvent(patience)) {
        if (matches(*event))
            return true;
    }
    return false;
}

} // namespace glimmerly::bench

#include "tests/support/desktop/XClient.h"

#include <poll.h>

#include <algorithm>
#include <cstring>
#include <span>
#include <stdexcept>

namespace glimmerly {

XClient::XClient(const std::string& display)
    : connection_(xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr)),
      screen_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data) {
    if (xcb_connection_has_error(connection_) != 0)
        throw std::runtime_error("no connection to " + display);
}

XClient::~XClient() {
    xcb_disconnect(connection_);
}

xcb_atom_t XClient::atom(std::string_view name) const {
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
    return Reply<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
}

xcb_window_t XClient::selectionOwner(std::string_view selection) const {
    const auto cookie = xcb_get_selection_owner(connection_, atom(selection));
    return Reply<xcb_get_selection_owner_reply_t>(xcb_get_selection_owner_reply(connection_, cookie, nullptr))
        ->owner;
}

std::optional<xcb_window_t> XClient::windowProperty(xcb_window_t window, std::string_view name) const {
    const auto cookie = xcb_get_property(connection_, 0, window, atom(name), XCB_ATOM_ANY, 0, 1);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) < 4)
        return std::nullopt;
    return *static_cast<xcb_window_t*>(xcb_get_property_value(reply.get()));
}

std::string XClient::propertyBytes(xcb_window_t window, std::string_view name) const {
    const auto cookie = xcb_get_property(connection_, 0, window, atom(name), XCB_ATOM_ANY, 0, 1U << 24U);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::vector<xcb_window_t> XClient::visibleChildren(xcb_window_t parent) const {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, parent), nullptr));
    std::vector<xcb_window_t> windows;
    if (!tree)
        return windows;
    const std::span children(xcb_query_tree_children(tree.get()),
                             static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    std::ranges::copy_if(children, std::back_inserter(windows), [this](xcb_window_t window) {
        const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            connection_, xcb_get_window_attributes(connection_, window), nullptr));
        return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
               attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
    });
    return windows;
}

std::vector<xcb_window_t> XClient::windowsWith(std::string_view property) const {
    std::vector<xcb_window_t> found;
    auto waiting = visibleWindows();
    while (!waiting.empty()) {
        const auto window = waiting.back();
        waiting.pop_back();
        if (!propertyBytes(window, property).empty())
            found.push_back(window);
        const auto children = visibleChildren(window);
        waiting.insert(waiting.end(), children.begin(), children.end());
    }
    return found;
}

std::vector<xcb_window_t> XClient::managedWindows(std::string_view list) const {
    const auto bytes = propertyBytes(root(), list);
    std::vector<xcb_window_t> windows(bytes.size() / sizeof(xcb_window_t));
    if (!windows.empty())
        std::memcpy(windows.data(), bytes.data(), bytes.size());
    return windows;
}

PixelRect XClient::areaOf(xcb_window_t window) const {
    const Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
    const Reply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        connection_, xcb_translate_coordinates(connection_, window, root(), 0, 0), nullptr));
    if (!size || !place)
        return {};
    return {place->dst_x, place->dst_y, size->width, size->height};
}

xcb_window_t XClient::focusedWindow() const {
    return Reply<xcb_get_input_focus_reply_t>(
               xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr))
        ->focus;
}

Bitmap XClient::pixels(PixelRect area) const {
    const auto cookie =
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root(), static_cast<std::int16_t>(area.x),
                      static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                      static_cast<std::uint16_t>(area.height), ~0U);
    const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection_, cookie, nullptr));
    Bitmap picture(area.size());
    if (!reply || screen_->root_depth != 24)
        throw std::runtime_error("the screen's pixels cannot be read");
    const auto* row = xcb_get_image_data(reply.get());
    for (int y = 0; y < area.height; ++y, row += picture.bytesPerRow()) {
        std::memcpy(picture.row(y).data(), row, picture.bytesPerRow());
        std::ranges::for_each(picture.row(y), [](Bitmap::Pixel& pixel) { pixel |= 0xFF000000U; });
    }
    return picture;
}

void XClient::setBackground(const Bitmap& picture) const {
    const auto width = static_cast<std::uint16_t>(picture.width());
    const xcb_pixmap_t pixmap = xcb_generate_id(connection_);
    const xcb_gcontext_t context = xcb_generate_id(connection_);
    xcb_create_pixmap(connection_, screen_->root_depth, pixmap, root(), width,
                      static_cast<std::uint16_t>(picture.height()));
    xcb_create_gc(connection_, context, pixmap, 0, nullptr);
    for (int y = 0; y < picture.height(); ++y)
        xcb_put_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, 1, 0,
                      static_cast<std::int16_t>(y), 0, screen_->root_depth,
                      static_cast<std::uint32_t>(picture.bytesPerRow()),
                      reinterpret_cast<const std::uint8_t*>(picture.row(y).data()));
    xcb_change_window_attributes(connection_, root(), XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection_, 0, root(), 0, 0, 0, 0);
    xcb_free_gc(connection_, context);
    xcb_free_pixmap(connection_, pixmap);
    sync();
}

Reply<xcb_generic_event_t> XClient::nextEvent(std::chrono::milliseconds limit) const {
    const auto end = std::chrono::steady_clock::now() + limit;
    Reply<xcb_generic_event_t> event(xcb_poll_for_event(connection_));
    while (!event) {
        const auto left = duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd waiting{.fd = xcb_get_file_descriptor(connection_), .events = POLLIN, .revents = 0};
        if (left.count() < 0 || poll(&waiting, 1, static_cast<int>(left.count())) < 0)
            break;
        event.reset(xcb_poll_for_event(connection_));
    }
    return event;
}

void XClient::sync() const {
    (void)focusedWindow();
}

} // namespace glimmerly

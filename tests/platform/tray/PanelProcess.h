#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace glimmerly {

/// A real panel with a tray in which windows are embedded, and what an X client sees of it.
class PanelProcess {
public:
    /// `background` is the panel's colour as in "#ffffff".
    explicit PanelProcess(const std::string& background = "#000000") {
        QFile file(directory_.filePath("panelrc"));
        if (file.open(QIODevice::WriteOnly))
            file.write(("rounded = 0\nbackground_color = " + background +
                        " 100\n\npanel_items = SC\npanel_size = 400 40\npanel_background_id = 1\n"
                        "systray_icon_size = 24\nsystray_padding = 4 4 4\nsystray_background_id = 1\n")
                           .c_str());
        file.close();
        process_.setStandardErrorFile(QProcess::nullDevice());
        process_.setStandardOutputFile(QProcess::nullDevice());
        process_.start("tint2", {"-c", file.fileName()});
    }
    ~PanelProcess() {
        process_.kill();
        process_.waitForFinished();
    }

private:
    QTemporaryDir directory_;
    QProcess process_;
};

/// The areas, in pixels of the root window, of the windows that are embedded and on the screen.
class EmbeddedWindows {
public:
    EmbeddedWindows() : connection_(xcb_connect(nullptr, nullptr)) {
        const auto cookie = xcb_intern_atom(connection_, 0, 12, "_XEMBED_INFO");
        auto* reply = xcb_intern_atom_reply(connection_, cookie, nullptr);
        embedInfo_ = reply ? reply->atom : 0U;
        std::free(reply);
    }
    ~EmbeddedWindows() { xcb_disconnect(connection_); }
    EmbeddedWindows(const EmbeddedWindows&) = delete;
    EmbeddedWindows& operator=(const EmbeddedWindows&) = delete;

    [[nodiscard]] std::vector<QRect> areas() const {
        std::vector<QRect> found;
        collect(root(), found);
        return found;
    }

private:
    template <typename Reply>
    using Owned = std::unique_ptr<Reply, decltype([](Reply* reply) { std::free(reply); })>;

    [[nodiscard]] xcb_window_t root() const {
        return xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    }
    void collect(xcb_window_t window, std::vector<QRect>& found) const {
        if (isEmbedded(window))
            found.push_back(areaOf(window));
        const Owned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
        if (!tree)
            return;
        const xcb_window_t* children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i)
            collect(children[i], found);
    }
    [[nodiscard]] bool isEmbedded(xcb_window_t window) const {
        const Owned<xcb_get_property_reply_t> info(xcb_get_property_reply(
            connection_, xcb_get_property(connection_, 0, window, embedInfo_, XCB_ATOM_ANY, 0, 2), nullptr));
        const Owned<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            connection_, xcb_get_window_attributes(connection_, window), nullptr));
        return info && info->type != XCB_ATOM_NONE && attributes &&
               attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    }
    [[nodiscard]] QRect areaOf(xcb_window_t window) const {
        const Owned<xcb_get_geometry_reply_t> size(
            xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
        const Owned<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
            connection_, xcb_translate_coordinates(connection_, window, root(), 0, 0), nullptr));
        if (!size || !place)
            return {};
        return {place->dst_x, place->dst_y, size->width, size->height};
    }

    xcb_connection_t* connection_;
    xcb_atom_t embedInfo_ = XCB_ATOM_NONE;
};

} // namespace glimmerly

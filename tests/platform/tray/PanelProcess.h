#pragma once

#include "tests/support/ScratchDirectory.h"
#include "tests/support/desktop/ChildProcess.h"
#include "tests/support/desktop/XClient.h"

#include <QRect>

namespace glimmerly {

/// A real panel with a tray in which windows are embedded.
class PanelProcess {
public:
    /// `background` is the panel's colour as in "#ffffff".
    explicit PanelProcess(const std::string& background = "#000000") {
        writeContent(file_,
                     "rounded = 0\nbackground_color = " + background +
                         " 100\n\npanel_items = SC\npanel_size = 400 40\npanel_background_id = 1\n"
                         "systray_icon_size = 24\nsystray_padding = 4 4 4\nsystray_background_id = 1\n");
        auto environment = cleanEnvironment();
        environment["DISPLAY"] = ::getenv("DISPLAY");
        process_.emplace(
            ChildProcess::Options{.command = {"tint2", "-c", file_}, .environment = environment});
    }

private:
    ScratchDirectory directory_;
    std::filesystem::path file_ = directory_.path() / "panelrc";
    std::optional<ChildProcess> process_;
};

/// The areas, in pixels of the root window, of the windows that are embedded and on the screen.
inline std::vector<QRect> embeddedAreas(const XClient& client) {
    std::vector<QRect> found;
    for (const auto window : client.windowsWith("_XEMBED_INFO")) {
        const auto area = client.areaOf(window);
        found.emplace_back(area.x, area.y, area.width, area.height);
    }
    return found;
}

} // namespace glimmerly

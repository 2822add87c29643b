#pragma once

#include "base/Geometry.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/XServerProcess.h"

#include <cstdlib>
#include <vector>

namespace glimmerly {

/// A server with several displays, DUMMY0, DUMMY1 …: Xorg with a driver that needs no device.
class DummyXorg {
public:
    explicit DummyXorg(const std::vector<PixelRect>& displays) : server_(command()) { arrange(displays); }

    [[nodiscard]] const std::string& display() const { return server_.display(); }

    /// Places the displays anew, within 4000 × 3000; others are switched off.
    void arrange(const std::vector<PixelRect>& displays) {
        std::string arrangement = "--fb 4000x3000";
        for (std::size_t i = 0; i < 2; ++i) {
            const std::string output = "DUMMY" + std::to_string(i);
            arrangement += " --output " + output;
            if (i >= displays.size()) {
                arrangement += " --off";
                continue;
            }
            const std::string mode = "mode" + std::to_string(modes_++);
            xrandr("--newmode " + mode + " 60" + timing(displays[i].width, 8) +
                   timing(displays[i].height, 2));
            xrandr("--addmode " + output + " " + mode);
            arrangement += " --mode " + mode + " --pos " + std::to_string(displays[i].x) + "x" +
                           std::to_string(displays[i].y);
        }
        xrandr(arrangement); // all at once: a display alone would be moved to the origin
    }

private:
    std::vector<std::string> command() const {
        writeContent(directory_.path() / "xorg.conf", R"(
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoEnableDevices" "false"
EndSection
Section "Device"
    Identifier "card"
    Driver "dummy"
    VideoRam 256000
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5.0-1000.0
    VertRefresh 5.0-200.0
EndSection
Section "Screen"
    Identifier "screen"
    Device "card"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Virtual 4000 3000
    EndSubSection
EndSection
)");
        return {
            "Xorg",        "-config",  directory_.path() / "xorg.conf", "-logfile", directory_.path() / "log",
            "-novtswitch", "-sharevts"};
    }
    static std::string timing(int size, int step) {
        std::string words;
        for (int i = 0; i < 4; ++i)
            words += " " + std::to_string(size + i * step);
        return words;
    }
    void xrandr(const std::string& arguments) const {
        if (std::system(("xrandr --display " + display() + " " + arguments).c_str()) != 0)
            throw std::runtime_error("xrandr " + arguments);
    }

    ScratchDirectory directory_;
    XServerProcess server_;
    int modes_ = 0;
};

} // namespace glimmerly

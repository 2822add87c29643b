#include "tests/support/desktop/DummyXorg.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

namespace glimmerly {

namespace {

constexpr const char* configuration = R"(
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoEnableDevices" "false"
    Option "DontVTSwitch" "true"
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
)";

std::vector<std::string> modeArguments(const std::string& name, PixelSize size) {
    std::vector<std::string> arguments{"xrandr", "--newmode", name, "60"};
    for (const int blank : {0, 8, 16, 24})
        arguments.push_back(std::to_string(size.width + blank));
    for (const int blank : {0, 2, 4, 6})
        arguments.push_back(std::to_string(size.height + blank));
    return arguments;
}

} // namespace

DummyXorg::DummyXorg(const std::vector<PixelRect>& displays) : server_(command()) {
    arrange(displays);
    // Without a keyboard to ask, the server numbers keys in an older way than every desktop today.
    run({"setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", "us"});
}

void DummyXorg::arrange(const std::vector<PixelRect>& displays) {
    PixelSize whole;
    // All in one command: a display alone would be moved to the origin.
    std::vector<std::string> arrangement;
    for (std::size_t index = 0; index < std::max(displays.size(), outputs_); ++index) {
        const auto output = fmt::format("DUMMY{}", index);
        arrangement.insert(arrangement.end(), {"--output", output});
        if (index >= displays.size()) {
            arrangement.emplace_back("--off");
            continue;
        }
        const auto& area = displays[index];
        const auto mode = fmt::format("{}x{}-{}", area.width, area.height, modes_++);
        run(modeArguments(mode, area.size()));
        run({"xrandr", "--addmode", output, mode});
        arrangement.insert(arrangement.end(),
                           {"--mode", mode, "--pos", fmt::format("{}x{}", area.x, area.y)});
        whole = {std::max(whole.width, area.maxX()), std::max(whole.height, area.maxY())};
    }
    arrangement.insert(arrangement.begin(),
                       {"xrandr", "--fb", fmt::format("{}x{}", whole.width, whole.height)});
    run(arrangement);
    outputs_ = displays.size();
}

std::vector<std::string> DummyXorg::command() const {
    writeContent(place_.path() / "xorg.conf", configuration);
    return {"Xorg",        "-config",  place_.path() / "xorg.conf", "-logfile", place_.path() / "xorg.log",
            "-novtswitch", "-sharevts"};
}

void DummyXorg::run(const std::vector<std::string>& command) const {
    auto environment = cleanEnvironment();
    environment["DISPLAY"] = server_.display();
    if (!ChildProcess::outputOf({.command = command, .environment = environment}))
        throw std::runtime_error(fmt::format("{} failed", fmt::join(command, " ")));
}

} // namespace glimmerly

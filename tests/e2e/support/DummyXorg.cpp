#include "tests/e2e/support/DummyXorg.h"

#include "tests/e2e/support/ChildProcess.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace glimmerly::e2e {

namespace {

void writeConfiguration(const std::filesystem::path& file, PixelSize whole) {
    std::ofstream(file) << fmt::format(R"(
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
        Virtual {} {}
    EndSubSection
EndSection
)",
                                       whole.width, whole.height);
}

PixelSize extentOf(const std::vector<PixelRect>& monitors) {
    PixelSize whole;
    for (const auto& area : monitors) {
        whole.width = std::max(whole.width, area.x + area.width);
        whole.height = std::max(whole.height, area.y + area.height);
    }
    return whole;
}

std::vector<std::string> modeArguments(const std::string& name, PixelSize size) {
    std::vector<std::string> arguments{"xrandr", "--newmode", name, "60"};
    for (const int blank : {0, 8, 16, 24})
        arguments.push_back(std::to_string(size.width + blank));
    for (const int blank : {0, 2, 4, 6})
        arguments.push_back(std::to_string(size.height + blank));
    return arguments;
}

} // namespace

DummyXorg::DummyXorg(const std::vector<PixelRect>& monitors) {
    const auto whole = extentOf(monitors);
    const auto configuration = place_.path() / "xorg.conf";
    writeConfiguration(configuration, whole);
    server_ = std::make_unique<XServerProcess>(
        std::vector<std::string>{"Xorg", "-config", configuration, "-logfile", place_.path() / "xorg.log",
                                 "-novtswitch", "-sharevts"});

    // All at once: a display alone would be moved to the origin.
    std::vector<std::string> arrangement{"xrandr", "--fb", fmt::format("{}x{}", whole.width, whole.height)};
    for (std::size_t index = 0; index < monitors.size(); ++index) {
        const auto& area = monitors[index];
        const auto output = fmt::format("DUMMY{}", index);
        const auto mode = fmt::format("{}x{}-{}", area.width, area.height, index);
        run(modeArguments(mode, area.size()));
        run({"xrandr", "--addmode", output, mode});
        const auto place = fmt::format("{}x{}", area.x, area.y);
        arrangement.insert(arrangement.end(), {"--output", output, "--mode", mode, "--pos", place});
    }
    run(arrangement);
    // Without a keyboard to ask, the server numbers keys in an older way than every desktop today.
    run({"setxkbmap", "-rules", "evdev", "-model", "pc105", "-layout", "us"});
}

void DummyXorg::run(const std::vector<std::string>& command) const {
    auto environment = cleanEnvironment();
    environment["DISPLAY"] = server_->display();
    if (!ChildProcess::outputOf({.command = command, .environment = environment}))
        throw std::runtime_error(fmt::format("{} failed", fmt::join(command, " ")));
}

} // namespace glimmerly::e2e

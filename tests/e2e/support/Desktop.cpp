#include "tests/e2e/support/Desktop.h"

#include "tests/support/NoisePicture.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/desktop/WaitUntil.h"

#include <fmt/format.h>

#include <fstream>
#include <stdexcept>

namespace glimmerly::e2e {

namespace {

void require(bool holds, const char* what) {
    if (!holds)
        throw std::runtime_error(what);
}

} // namespace

Desktop::Desktop(const Options& options) {
    startServer(options);
    makeHome();
    if (!options.keyboardLayout.empty()) {
        auto command = options.keyboardLayout;
        command.insert(command.begin(), "setxkbmap");
        require(outputOf(command).has_value(), "setxkbmap failed");
    }
    client_->setBackground(noisePicture(client_->size(), 1));
    if (options.windowManager == WindowManager::openbox)
        startWindowManager();
    if (options.panel == Panel::tint2)
        startPanel();
}

ChildProcess& Desktop::start(std::vector<std::string> command) {
    programs_.push_back(std::make_unique<ChildProcess>(ChildProcess::Options{
        .command = std::move(command), .environment = environment_, .errors = home() / "programs.err"}));
    return *programs_.back();
}

std::optional<std::string> Desktop::outputOf(std::vector<std::string> command) const {
    return ChildProcess::outputOf({.command = std::move(command), .environment = environment_});
}

void Desktop::startServer(const Options& options) {
    if (options.monitors.empty())
        xvfb_.emplace(fmt::format("{}x{}x24", options.size.width, options.size.height));
    else
        xorg_.emplace(options.monitors);
    client_ = std::make_unique<XClient>(server().display());
}

void Desktop::makeHome() {
    const auto runtime = home() / "run";
    std::filesystem::create_directories(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
    std::filesystem::create_directories(home() / "tmp");
    environment_ = cleanEnvironment();
    environment_["DISPLAY"] = server().display();
    environment_["HOME"] = home();
    environment_["XDG_RUNTIME_DIR"] = runtime;
    environment_["DBUS_SESSION_BUS_ADDRESS"] = bus_.address();
    environment_["TMPDIR"] = home() / "tmp";
}

void Desktop::startWindowManager() {
    start({"openbox"});
    const auto announced = [this] {
        return client_->windowProperty(client_->root(), "_NET_SUPPORTING_WM_CHECK").has_value();
    };
    require(waitUntil(announced), "no window manager");
}

void Desktop::startPortal(const std::string& answers) {
    std::filesystem::create_directories(home() / "portal");
    portalSays(answers);
    start({GLIMMERLY_PORTAL_DOUBLE, home() / "portal/answers.ini"});
    const auto answering = [this] {
        return outputOf({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.portal.Desktop",
                         "/", "org.freedesktop.DBus.Peer.Ping"})
            .has_value();
    };
    require(waitUntil(answering), "no portal");
}

void Desktop::portalSays(const std::string& answers) const {
    // In one step, so that nobody reads half of it.
    const auto file = home() / "portal/answers.ini";
    writeContent(file.string() + ".new", "[General]\n" + answers);
    std::filesystem::rename(file.string() + ".new", file);
}

std::vector<pid_t> Desktop::processesOf(std::string_view program) const {
    std::vector<pid_t> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::error_code unreadable;
        const auto name = entry.path().filename().string();
        if (std::isdigit(static_cast<unsigned char>(name.front())) &&
            std::filesystem::read_symlink(entry.path() / "exe", unreadable).string().contains(program) &&
            contentOf(entry.path() / "environ").contains("HOME=" + home().string()))
            found.push_back(std::stoi(name));
    }
    return found;
}

ChildProcess& Desktop::startPanel() {
    const auto configuration = home() / "tint2rc";
    std::ofstream(configuration) << "panel_items = TSC\n"
                                    "panel_size = 100% 32\n"
                                    "panel_position = bottom center horizontal\n"
                                    "systray_icon_size = 22\n"
                                    "time1_format = \n";
    auto& panel = start({"tint2", "-c", configuration});
    const auto announced = [this] { return client_->selectionOwner("_NET_SYSTEM_TRAY_S0") != XCB_NONE; };
    require(waitUntil(announced), "no panel");
    return panel;
}

} // namespace glimmerly::e2e

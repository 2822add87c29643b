#include "tests/e2e/support/Glimmerly.h"

#include "tests/support/ScratchDirectory.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace glimmerly::e2e {

namespace {

constexpr std::string_view identifier = "app.glimmerly.Glimmerly";

bool covers(PixelRect outer, PixelRect inner) {
    return outer.x <= inner.x && outer.y <= inner.y && outer.x + outer.width >= inner.x + inner.width &&
           outer.y + outer.height >= inner.y + inner.height;
}

} // namespace

ChildProcess::Options Glimmerly::command(const Desktop& desktop, const Options& options) {
    auto environment = desktop.environment();
    for (const auto& [name, value] : options.environment)
        environment[name] = value;
    std::vector<std::string> command{options.program};
    command.insert(command.end(), options.arguments.begin(), options.arguments.end());
    return {.command = command,
            .environment = environment,
            .errors = desktop.home() / "glimmerly.err",
            .beforeExec = options.beforeExec};
}

Glimmerly::Glimmerly(Desktop& desktop, const Options& options, Readiness readiness)
    : desktop_(desktop), process_(command(desktop, options)) {
    const auto ready = [this, readiness] {
        return readiness == Readiness::hotkeyHeld ? isHotkeyHeld()
                                                  : !log("applicationDidFinishLaunching").empty();
    };
    if (!waitUntil(ready))
        throw std::runtime_error("the program did not start: " + diagnostics());
}

std::filesystem::path Glimmerly::logFile() const {
    return desktop_.home() / ".local/share" / identifier / ".svc/events.jsonl";
}

std::filesystem::path Glimmerly::preferencesFile() const {
    return desktop_.home() / ".config" / identifier / "preferences.ini";
}

std::filesystem::path Glimmerly::temporaryDirectory() const {
    return desktop_.home() / "run" / identifier;
}

std::filesystem::path Glimmerly::executable() {
    return GLIMMERLY_PROGRAM;
}

std::vector<std::filesystem::path> Glimmerly::captureFiles(const std::filesystem::path& root) const {
    std::vector<std::filesystem::path> files;
    std::error_code missing;
    for (const auto& entry :
         std::filesystem::directory_iterator(root / temporaryDirectory().relative_path(), missing)) {
        // Beside them lie the lock and the socket by which there is one program only.
        if (!entry.path().filename().string().starts_with("instance-"))
            files.push_back(entry.path());
    }
    return files;
}

std::string Glimmerly::errors() const {
    return contentOf(desktop_.home() / "glimmerly.err");
}

std::string Glimmerly::diagnostics() const {
    std::string text = errors();
    for (const auto& line : log())
        text += line.value("message", "?") + "\n";
    return text;
}

std::vector<nlohmann::json> Glimmerly::log() const {
    std::vector<nlohmann::json> lines;
    std::ifstream file(logFile());
    for (std::string line; std::getline(file, line);) {
        auto value = nlohmann::json::parse(line, nullptr, false);
        lines.push_back(value.is_object() ? std::move(value) : nlohmann::json::object());
    }
    return lines;
}

std::vector<nlohmann::json> Glimmerly::log(std::string_view message) const {
    auto lines = log();
    std::erase_if(lines, [&](const nlohmann::json& line) { return line.value("message", "") != message; });
    return lines;
}

bool Glimmerly::waitForLog(std::string_view message, std::size_t count) const {
    return waitUntil([&] { return log(message).size() >= count; });
}

bool Glimmerly::isHotkeyHeld() const {
    // With the server to ourselves, so that our own try can never be what keeps the program from its keys.
    const auto& client = desktop_.client();
    xcb_grab_server(client.get());
    const auto cookie =
        xcb_grab_key_checked(client.get(), 0, client.root(), XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT,
                             static_cast<xcb_keycode_t>(Key::a), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_generic_error_t> refused(xcb_request_check(client.get(), cookie));
    xcb_ungrab_key(client.get(), static_cast<xcb_keycode_t>(Key::a), client.root(),
                   XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT);
    xcb_ungrab_server(client.get());
    client.sync();
    return refused != nullptr;
}

std::vector<xcb_window_t> Glimmerly::overlays(PixelRect area) const {
    auto windows = desktop_.client().visibleWindows();
    std::erase_if(windows,
                  [&](xcb_window_t window) { return !covers(desktop_.client().areaOf(window), area); });
    return windows;
}

std::vector<xcb_window_t> Glimmerly::overlays() const {
    const auto size = desktop_.client().size();
    return overlays({0, 0, size.width, size.height});
}

} // namespace glimmerly::e2e

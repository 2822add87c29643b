#pragma once

#include "base/Bitmap.h"
#include "tests/e2e/support/Desktop.h"
#include "tests/support/desktop/Robot.h"
#include "tests/support/desktop/WaitUntil.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace glimmerly::e2e {

/// The program under test on a desktop, and what can be seen of it from outside.
class Glimmerly {
public:
    struct Options {
        Environment environment{};                ///< added to the desktop's
        std::function<void()> beforeExec = [] {}; ///< runs in the program's process before it starts
        std::vector<std::string> arguments{};
        std::filesystem::path program = executable();
    };
    enum class Readiness { hotkeyHeld, launched };

    /// Starts the program and waits until it has come that far.
    Glimmerly(Desktop& desktop, const Options& options, Readiness readiness = Readiness::hotkeyHeld);
    explicit Glimmerly(Desktop& desktop) : Glimmerly(desktop, Options()) {}

    [[nodiscard]] static std::filesystem::path executable();
    [[nodiscard]] ChildProcess& process() { return process_; }

    [[nodiscard]] std::filesystem::path logFile() const;
    [[nodiscard]] std::filesystem::path preferencesFile() const;
    /// The folder that capture files are made in.
    [[nodiscard]] std::filesystem::path temporaryDirectory() const;
    /// All that lies there, whole or in part, beside what tells further starts of this one.
    /// `root` is the root directory to look from.
    [[nodiscard]] std::vector<std::filesystem::path>
    captureFiles(const std::filesystem::path& root = "/") const;
    /// What the program wrote on standard error.
    [[nodiscard]] std::string errors() const;
    /// That, and the messages of its log, a line each.
    [[nodiscard]] std::string diagnostics() const;

    /// Every line of the log, decoded; a line that is no JSON is an empty object.
    [[nodiscard]] std::vector<nlohmann::json> log() const;
    [[nodiscard]] std::vector<nlohmann::json> log(std::string_view message) const;
    [[nodiscard]] bool waitForLog(std::string_view message, std::size_t count = 1) const;

    /// True while some program holds the default hotkey's keys.
    [[nodiscard]] bool isHotkeyHeld() const;
    /// The windows that cover the display `area` above everything else.
    [[nodiscard]] std::vector<xcb_window_t> overlays(PixelRect area) const;
    [[nodiscard]] std::vector<xcb_window_t> overlays() const;

private:
    static ChildProcess::Options command(const Desktop& desktop, const Options& options);

    Desktop& desktop_;
    ChildProcess process_;
};

} // namespace glimmerly::e2e

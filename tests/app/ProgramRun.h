#pragma once

#include "tests/support/ScratchDirectory.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>
#include <nlohmann/json.hpp>
#include <xcb/xcb.h>

#include <csignal>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace glimmerly {

/// A home and a display for runs of the real program, and what can be seen of them there.
class ProgramHome {
public:
    explicit ProgramHome(const std::string& display, const std::string& busAddress = "disabled:")
        : environment_(QProcessEnvironment::systemEnvironment()),
          connection_(xcb_connect(display.c_str(), nullptr)) {
        const auto set = [this](const char* name, const std::string& value) {
            environment_.insert(name, QString::fromStdString(value));
        };
        set("DISPLAY", display);
        set("DBUS_SESSION_BUS_ADDRESS", busAddress);
        set("HOME", directory_.path());
        set("XDG_DATA_HOME", directory_.path() / "data");
        set("XDG_CONFIG_HOME", directory_.path() / "config");
        set("XDG_RUNTIME_DIR", directory_.path());
        environment_.remove("SESSION_MANAGER");
    }
    ~ProgramHome() { xcb_disconnect(connection_); }
    ProgramHome(const ProgramHome&) = delete;
    ProgramHome& operator=(const ProgramHome&) = delete;

    [[nodiscard]] std::unique_ptr<QProcess> start() const {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment_);
        process->setProcessChannelMode(QProcess::MergedChannels);
        process->start(GLIMMERLY_PROGRAM, QStringList());
        return process;
    }
    /// The messages logged so far, oldest first.
    [[nodiscard]] std::vector<std::string> messages() const {
        std::istringstream lines(
            contentOf(directory_.path() / "data/app.glimmerly.Glimmerly/.svc/events.jsonl"));
        std::vector<std::string> found;
        for (std::string line; std::getline(lines, line);)
            found.push_back(nlohmann::json::parse(line).value("message", ""));
        return found;
    }
    [[nodiscard]] bool waitForMessage(const std::string& message) const {
        return QTest::qWaitFor(
            [&] {
                const auto all = messages();
                return std::ranges::find(all, message) != all.end();
            },
            20'000);
    }
    /// The user's directory for short-lived files.
    [[nodiscard]] std::filesystem::path temporaryDirectory() const {
        return directory_.path() / "app.glimmerly.Glimmerly";
    }
    /// How many windows are on the screen; without a window manager they are all of the program's.
    [[nodiscard]] int visibleWindows() const {
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        auto* tree = xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root), nullptr);
        int count = 0;
        for (int i = 0; tree && i < xcb_query_tree_children_length(tree); ++i)
            count += isVisible(xcb_query_tree_children(tree)[i]) ? 1 : 0;
        std::free(tree);
        return count;
    }

private:
    [[nodiscard]] bool isVisible(xcb_window_t window) const {
        auto* attributes = xcb_get_window_attributes_reply(
            connection_, xcb_get_window_attributes(connection_, window), nullptr);
        const bool visible = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                             attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
        std::free(attributes);
        return visible;
    }

    ScratchDirectory directory_;
    QProcessEnvironment environment_;
    xcb_connection_t* connection_;
};

/// Ends `process` with `signal`; its exit status, or none when it did not exit by itself.
inline std::optional<int> exitStatusAfter(QProcess& process, int signal) {
    ::kill(static_cast<pid_t>(process.processId()), signal);
    if (!process.waitForFinished(20'000) || process.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return process.exitCode();
}

} // namespace glimmerly

#pragma once

#include "tests/support/desktop/DummyXorg.h"
#include "tests/support/desktop/SessionBus.h"
#include "tests/support/desktop/XClient.h"

#include <memory>
#include <optional>
#include <vector>

namespace glimmerly::e2e {

enum class WindowManager { none, openbox };
enum class Panel { none, tint2 };

/// What a person sits in front of: displays, a window manager, a panel with a tray, a session bus, and a home
/// that is empty and its own. The displays show noise in which no pixel resembles its neighbours.
class Desktop {
public:
    struct Options {
        PixelSize size = {1280, 800};
        std::vector<PixelRect> monitors{}; ///< several displays in place of one of that size
        WindowManager windowManager = WindowManager::openbox;
        Panel panel = Panel::none;
        std::vector<std::string> keyboardLayout{}; ///< arguments for setxkbmap
    };

    explicit Desktop(const Options& options);
    Desktop() : Desktop(Options()) {}

    [[nodiscard]] XServer& server() { return xorg_ ? xorg_->server() : *xvfb_; }
    [[nodiscard]] const XClient& client() const { return *client_; }
    /// What programs on this desktop are started with.
    [[nodiscard]] const Environment& environment() const { return environment_; }
    [[nodiscard]] const std::filesystem::path& home() const { return home_.path(); }

    /// Places the displays anew, on a desktop of several; others go.
    void arrange(const std::vector<PixelRect>& displays) { xorg_.value().arrange(displays); }
    /// Starts another program here; it ends with the desktop.
    ChildProcess& start(std::vector<std::string> command);
    /// Starts the panel, and waits until it has a tray.
    ChildProcess& startPanel();
    /// Starts a portal that answers as these lines say, and waits until it does; PortalDouble.cpp knows them.
    void startPortal(const std::string& answers);
    void portalSays(const std::string& answers) const;
    /// The output of another program that runs here to its end.
    [[nodiscard]] std::optional<std::string> outputOf(std::vector<std::string> command) const;
    /// The processes here whose program's path contains `program`.
    [[nodiscard]] std::vector<pid_t> processesOf(std::string_view program) const;

private:
    void startServer(const Options& options);
    void makeHome();
    void startWindowManager();

    ScratchDirectory home_;
    SessionBus bus_;
    std::optional<DummyXorg> xorg_;
    std::optional<XvfbServer> xvfb_;
    std::unique_ptr<XClient> client_;
    Environment environment_;
    std::vector<std::unique_ptr<ChildProcess>> programs_;
};

} // namespace glimmerly::e2e

#pragma once

#include "tests/support/ProcessState.h"
#include "tests/support/desktop/WaitUntil.h"
#include "tests/support/desktop/XServer.h"
#include "tests/support/desktop/XcbClient.h"

#include <QApplication>
#include <QElapsedTimer>
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

namespace glimmerly {

/// Runs the main loop until `condition` holds; false when it does not within `seconds`.
inline bool runUntil(const std::function<bool()>& condition, int seconds = 10) {
    QElapsedTimer elapsed;
    elapsed.start();
    while (!condition()) {
        if (elapsed.hasExpired(seconds * 1000LL))
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        ::usleep(1000);
    }
    return true;
}

enum class WindowManager { none, openbox };

inline std::string nameOfWindowManager(const testing::TestParamInfo<WindowManager>& instance) {
    return instance.param == WindowManager::none ? "none" : "openbox";
}

/// An X server with this process as a Qt program on it.
class X11Desktop {
public:
    struct Options {
        WindowManager windowManager = WindowManager::none;
        const char* scale = nullptr;
        std::string screen = "640x481x24"; ///< as XvfbServer's, like the next
        std::vector<std::string> serverOptions = {};
    };

    X11Desktop() : X11Desktop(Options{}) {}
    explicit X11Desktop(const Options& options)
        : server(options.screen, options.serverOptions), display_("DISPLAY", server.display().c_str()),
          platform_("QT_QPA_PLATFORM", "xcb"), scale_("QT_SCALE_FACTOR", options.scale) {
        if (options.windowManager == WindowManager::openbox)
            startWindowManager();
        application.emplace(argumentCount_, arguments_);
    }

    /// Waits until it manages windows.
    void startWindowManager();

    XvfbServer server;
    std::optional<ChildProcess> windowManager;

private:
    ScopedEnvironment display_;
    ScopedEnvironment platform_;
    ScopedEnvironment scale_;
    char name_[6] = "tests";
    char* arguments_[2] = {name_, nullptr};
    int argumentCount_ = 1;

public:
    std::optional<QApplication> application;
};

inline void X11Desktop::startWindowManager() {
    auto environment = cleanEnvironment();
    environment["DISPLAY"] = server.display();
    windowManager.emplace(
        ChildProcess::Options{.command = {"openbox", "--sm-disable"}, .environment = environment});
    XcbClient client;
    const auto probe = client.open({});
    // Again and again: Openbox may overlook what it is asked while it starts.
    EXPECT_TRUE(waitUntil([&] {
        xcb_map_window(client.get(), probe);
        return std::ranges::count(client.managedWindows(), probe) > 0;
    }));
    client.close(probe);
}

} // namespace glimmerly

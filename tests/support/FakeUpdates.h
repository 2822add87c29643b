#pragma once

#include "platform/Updates.h"

#include <map>
#include <utility>
#include <vector>

namespace glimmerly {

/// An updater whose flags a test sets; it delivers them at once where a real one takes a turn of the main
/// loop.
class FakeUpdater : public Updater {
public:
    [[nodiscard]] bool value(UpdaterFlag flag) const override {
        const auto found = values.find(flag);
        return found != values.end() && found->second;
    }
    [[nodiscard]] Observation observe(UpdaterFlag flag, std::function<void(bool)> handler) override {
        handler(value(flag));
        auto observer = std::make_shared<std::function<void(bool)>>(std::move(handler));
        observers.emplace_back(flag, observer);
        return observer;
    }
    void setAutomaticallyChecksForUpdates(bool checks) override {
        set(UpdaterFlag::automaticallyChecksForUpdates, checks);
    }
    void setAutomaticallyDownloadsUpdates(bool downloads) override {
        set(UpdaterFlag::automaticallyDownloadsUpdates, downloads);
    }
    /// As the updater itself does it.
    void set(UpdaterFlag flag, bool value) {
        if (std::exchange(values[flag], value) == value)
            return;
        for (const auto& [observed, observer] : observers) {
            if (const auto handler = observer.lock(); handler && observed == flag)
                (*handler)(value);
        }
    }

    std::map<UpdaterFlag, bool> values;
    std::vector<std::pair<UpdaterFlag, std::weak_ptr<std::function<void(bool)>>>> observers;
};

class FakeUpdaterController : public UpdaterController {
public:
    FakeUpdaterController(FakeUpdater& updater, int& checks) : updater_(updater), checks_(checks) {}
    [[nodiscard]] Updater& updater() override { return updater_; }
    void checkForUpdates() override { ++checks_; }

private:
    FakeUpdater& updater_;
    int& checks_;
};

class FakeUpdates : public UpdateFramework {
public:
    [[nodiscard]] std::unique_ptr<UpdaterController> startController(UpdaterDelegate&) override {
        ++controllers;
        return std::make_unique<FakeUpdaterController>(updater, checks);
    }
    void applicationDidFinishLaunching() override {}
    void applicationWillTerminate() override {}

    FakeUpdater updater;
    int controllers = 0;
    int checks = 0; ///< that the user asked for
};

} // namespace glimmerly

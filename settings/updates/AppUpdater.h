#pragma once

#include "platform/Application.h"
#include "platform/Updates.h"

#include <memory>

namespace glimmerly {

class Preferences;

/// What the updater's layer works with.
struct AppUpdaterServices {
    BundleInfo bundle;
    Application& application;
    Preferences& preferences;
    UpdateFramework& updates;
};

/// Keeps the desktop's update framework to the feed and the interval of this build, and logs how its checks
/// and installations end. Main thread only.
class AppUpdater final : public UpdaterDelegate {
public:
    static constexpr std::string_view feedURLKey = "SUFeedURL";
    static constexpr std::string_view checkIntervalKey = "SUScheduledCheckInterval";

    explicit AppUpdater(AppUpdaterServices services);
    AppUpdater(const AppUpdater&) = delete;
    AppUpdater& operator=(const AppUpdater&) = delete;

    [[nodiscard]] static AppUpdater& shared();

    /// None until the initialisation is over.
    [[nodiscard]] UpdaterController* updaterController() const { return updaterController_.get(); }
    /// A check that the user asked for.
    void checkForUpdates();

    void updaterDidNotFindUpdate(const NoUpdateFound& outcome) override;
    void updaterDidAbort(const Error& error) override;
    void updaterIsNotConfigured(const Error& error) override;

private:
    void keepToBundlesFeed();
    void keepToBundlesInterval();

    AppUpdaterServices services_;
    std::unique_ptr<UpdaterController> updaterController_;
};

} // namespace glimmerly

#pragma once

#include "platform/Updates.h"

#include <functional>
#include <vector>

namespace glimmerly {

/// Mirrors the updater's four flags for the settings window. Main thread only.
class UpdaterViewModel {
public:
    /// `controller` must outlive this.
    explicit UpdaterViewModel(UpdaterController& controller);
    UpdaterViewModel(const UpdaterViewModel&) = delete;
    UpdaterViewModel& operator=(const UpdaterViewModel&) = delete;

    [[nodiscard]] static UpdaterViewModel& shared();

    [[nodiscard]] bool canCheckForUpdates() const { return canCheckForUpdates_; }
    [[nodiscard]] bool automaticallyChecksForUpdates() const { return automaticallyChecksForUpdates_; }
    [[nodiscard]] bool automaticallyDownloadsUpdates() const { return automaticallyDownloadsUpdates_; }
    [[nodiscard]] bool allowsAutomaticUpdates() const { return allowsAutomaticUpdates_; }

    void setAutomaticallyChecksForUpdates(bool checks);
    void setAutomaticallyDownloadsUpdates(bool downloads);

    /// Runs after each change of a flag, whoever made it.
    void setOnChange(std::function<void()> handler) { onChange_ = std::move(handler); }

private:
    void changed() const;

    bool canCheckForUpdates_ = false;
    bool automaticallyChecksForUpdates_ = false;
    bool automaticallyDownloadsUpdates_ = false;
    bool allowsAutomaticUpdates_ = true;
    UpdaterController& controller_;
    std::function<void()> onChange_;
    std::vector<Updater::Observation> subscriptions_; ///< they end before the rest
};

} // namespace glimmerly

#include "settings/updates/UpdaterViewModel.h"

#include "settings/updates/AppUpdater.h"

namespace glimmerly {

UpdaterViewModel& UpdaterViewModel::shared() {
    static auto* const instance = new UpdaterViewModel(*AppUpdater::shared().updaterController());
    return *instance;
}

UpdaterViewModel::UpdaterViewModel(UpdaterController& controller) : controller_(controller) {
    auto& updater = controller.updater();
    const auto follow = [&](UpdaterFlag flag, std::function<void(bool)> handler) {
        subscriptions_.push_back(updater.observe(flag, std::move(handler)));
    };
    follow(UpdaterFlag::canCheckForUpdates, [this](bool can) {
        canCheckForUpdates_ = can;
        changed();
    });
    follow(UpdaterFlag::automaticallyChecksForUpdates, [this](bool checks) {
        if (checks != automaticallyChecksForUpdates_)
            setAutomaticallyChecksForUpdates(checks);
    });
    follow(UpdaterFlag::automaticallyDownloadsUpdates, [this](bool downloads) {
        if (downloads != automaticallyDownloadsUpdates_)
            setAutomaticallyDownloadsUpdates(downloads);
    });
    follow(UpdaterFlag::allowsAutomaticUpdates, [this](bool allows) {
        if (allows == allowsAutomaticUpdates_)
            return;
        allowsAutomaticUpdates_ = allows;
        changed();
    });
}

void UpdaterViewModel::setAutomaticallyChecksForUpdates(bool checks) {
    automaticallyChecksForUpdates_ = checks;
    controller_.updater().setAutomaticallyChecksForUpdates(checks);
    changed();
}

void UpdaterViewModel::setAutomaticallyDownloadsUpdates(bool downloads) {
    automaticallyDownloadsUpdates_ = downloads;
    controller_.updater().setAutomaticallyDownloadsUpdates(downloads);
    changed();
}

void UpdaterViewModel::changed() const {
    if (onChange_)
        onChange_();
}

} // namespace glimmerly

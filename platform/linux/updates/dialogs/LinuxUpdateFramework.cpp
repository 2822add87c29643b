#include "platform/linux/updates/dialogs/LinuxUpdateFramework.h"

#include "platform/linux/updates/SoftwareUpdater.h"
#include "platform/linux/updates/UpdateWorker.h"
#include "platform/linux/updates/dialogs/StandardUpdateDialogs.h"
#include "platform/linux/updates/install/TrialStart.h"

namespace glimmerly {

namespace {

std::string versionOf(const BundleInfo& bundle) {
    return bundle.version.value_or(bundle.shortVersion.value_or(""));
}

/// None when the bundle names no feed, or no public key.
std::unique_ptr<UpdateWorker> workerFor(const BundleInfo& bundle, const InstalledFolder& installed,
                                        MainQueue& mainQueue) {
    const auto key = UpdateKey::fromBase64(bundle.updatePublicKey.value_or(""));
    if (!bundle.feedURL || !key)
        return nullptr;
    return std::make_unique<UpdateWorker>(UpdateWorker::Options{.feedURL = *bundle.feedURL,
                                                                .key = *key,
                                                                .currentVersion = versionOf(bundle),
                                                                .installed = installed},
                                          mainQueue);
}

} // namespace

class LinuxUpdateFramework::Controller final : public UpdaterController {
public:
    Controller(LinuxUpdateFramework& framework, UpdaterDelegate& delegate)
        : framework_(framework), dialogs_(framework.bundle_.applicationName()),
          schedule_(framework.preferences_, framework.bundle_.scheduledCheckInterval, systemClock()),
          work_(workerFor(framework.bundle_, framework.start_.installed(), framework.mainQueue_)),
          updater_({.mainQueue = framework.mainQueue_,
                    .application = framework.application_,
                    .dialogs = dialogs_,
                    .delegate = delegate,
                    .schedule = schedule_,
                    .work = work_.get(),
                    .currentVersion = versionOf(framework.bundle_),
                    .program = framework.start_.installed().executable(),
                    .downloadPage = framework.bundle_.websiteURL}) {
        updater_.start();
    }
    ~Controller() override { framework_.controller_ = nullptr; }
    Controller(const Controller&) = delete;
    Controller& operator=(const Controller&) = delete;

    [[nodiscard]] Updater& updater() override { return updater_; }
    [[nodiscard]] SoftwareUpdater& softwareUpdater() { return updater_; }
    void checkForUpdates() override { updater_.checkForUpdates(); }
    void applicationWillTerminate() {
        updater_.applicationWillTerminate();
        dialogs_.close();
    }

private:
    LinuxUpdateFramework& framework_;
    StandardUpdateDialogs dialogs_;
    UpdateSchedule schedule_;
    std::unique_ptr<UpdateWorker> work_;
    SoftwareUpdater updater_;
};

LinuxUpdateFramework::LinuxUpdateFramework(const BundleInfo& bundle, TrialStart& start,
                                           Application& application, MainQueue& mainQueue,
                                           Preferences& preferences)
    : bundle_(bundle), start_(start), application_(application), mainQueue_(mainQueue),
      preferences_(preferences) {}

LinuxUpdateFramework::~LinuxUpdateFramework() = default;

std::unique_ptr<UpdaterController> LinuxUpdateFramework::startController(UpdaterDelegate& delegate) {
    auto controller = std::make_unique<Controller>(*this, delegate);
    controller_ = controller.get();
    return controller;
}

void LinuxUpdateFramework::applicationDidFinishLaunching() {
    start_.end();
    const auto failedVersion = start_.installed().removeLeftovers(versionOf(bundle_));
    if (failedVersion && controller_ != nullptr)
        controller_->softwareUpdater().newerVersionDidNotStart(*failedVersion);
}

void LinuxUpdateFramework::openNewInstance(std::function<void(std::optional<Error>)> completion) {
    if (controller_ != nullptr)
        controller_->softwareUpdater().openNewInstance(std::move(completion));
    else
        application_.openSuccessor(start_.installed().executable(), std::move(completion));
}

void LinuxUpdateFramework::applicationWillTerminate() {
    if (controller_ != nullptr)
        controller_->applicationWillTerminate();
}

} // namespace glimmerly

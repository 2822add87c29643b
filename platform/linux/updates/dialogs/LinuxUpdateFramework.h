#pragma once

#include "platform/Application.h"
#include "platform/Updates.h"

namespace glimmerly {

class MainQueue;
class Preferences;
class TrialStart;

/// Updates of a program that was unpacked into a folder of the user's, over a feed that its bundle names.
class LinuxUpdateFramework final : public UpdateFramework {
public:
    /// All of them must outlive this.
    LinuxUpdateFramework(const BundleInfo& bundle, TrialStart& start, Application& application,
                         MainQueue& mainQueue, Preferences& preferences);
    ~LinuxUpdateFramework() override;

    [[nodiscard]] std::unique_ptr<UpdaterController> startController(UpdaterDelegate& delegate) override;
    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override;
    /// As `Application::openNewInstance`; a version that is ready is installed for it.
    void openNewInstance(std::function<void(std::optional<Error>)> completion);

private:
    class Controller;

    const BundleInfo& bundle_;
    TrialStart& start_;
    Application& application_;
    MainQueue& mainQueue_;
    Preferences& preferences_;
    Controller* controller_ = nullptr; ///< while there is one
};

} // namespace glimmerly

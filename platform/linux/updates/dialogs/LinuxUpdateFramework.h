#pragma once

#include "platform/Application.h"
#include "platform/Updates.h"

namespace glimmerly {

class MainQueue;
class Preferences;

/// Updates of a program that was unpacked into a folder of the user's, over a feed that its bundle names.
class LinuxUpdateFramework final : public UpdateFramework {
public:
    /// All of them must outlive this.
    LinuxUpdateFramework(const BundleInfo& bundle, Application& application, MainQueue& mainQueue,
                         Preferences& preferences);
    ~LinuxUpdateFramework() override;

    [[nodiscard]] std::unique_ptr<UpdaterController> startController(UpdaterDelegate& delegate) override;
    void applicationWillTerminate() override;

private:
    class Controller;

    const BundleInfo& bundle_;
    Application& application_;
    MainQueue& mainQueue_;
    Preferences& preferences_;
    Controller* controller_ = nullptr; ///< while there is one
};

} // namespace glimmerly

#pragma once

#include "platform/Application.h"

#include <memory>

namespace glimmerly {

/// The program as Qt's application object. Made before every other object of Qt, destroyed after them.
class QtApplication : public Application {
public:
    /// Keeps `argc` and `argv` in use for its whole life.
    QtApplication(int& argc, char** argv, const BundleInfo& bundle);
    ~QtApplication() override;
    QtApplication(const QtApplication&) = delete;
    QtApplication& operator=(const QtApplication&) = delete;

    /// Runs the main loop and tells `delegate` of its start and end, also when the desktop goes away and ends
    /// the process from within. Returns the exit status.
    int run(ApplicationDelegate& delegate);

    /// Tells the program that it was started again.
    void reopen();
    /// What starts the program anew; until it is set, that fails.
    using Relaunch = std::function<void(const std::filesystem::path& program,
                                        std::function<void(std::optional<Error>)> completion)>;
    void setRelaunch(Relaunch relaunch) { relaunch_ = std::move(relaunch); }

    void setActivationPolicy(ActivationPolicy policy) override;
    void activateIgnoringOtherApps() override;
    void terminate() override;
    void onReopen(std::function<void()> handler) override;
    void openNewInstance(std::function<void(std::optional<Error>)> completion) override;
    void openSuccessor(const std::filesystem::path& program,
                       std::function<void(std::optional<Error>)> completion) override;

private:
    class Toolkit;
    std::unique_ptr<Toolkit> toolkit_;
    std::function<void()> reopenHandler_;
    Relaunch relaunch_;
    enum class Reopening { none, awaitsHandler } reopening_ = Reopening::none;
};

} // namespace glimmerly

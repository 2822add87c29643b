#pragma once

#include "platform/Application.h"

#include <array>
#include <memory>
#include <string>

namespace glimmerly {

/// The program as Qt's application object. Made before every other object of Qt, destroyed after them.
class QtApplication : public Application {
public:
    /// `program` is the name it was started by; it stays in use for the whole life.
    QtApplication(char* program, const BundleInfo& bundle);
    ~QtApplication() override;
    QtApplication(const QtApplication&) = delete;
    QtApplication& operator=(const QtApplication&) = delete;

    /// Runs the main loop and tells `delegate` of its start and end, also when the desktop goes away and ends
    /// the process from within. Returns the exit status.
    int run(ApplicationDelegate& delegate);

    /// Tells the program that it was started again.
    void reopen();
    using Completion = std::function<void(std::optional<Error>)>;
    /// What opens a successor; until it is set, that fails.
    using Relaunch = std::function<void(const std::filesystem::path& program, Completion completion)>;
    void setRelaunch(Relaunch relaunch) { relaunch_ = std::move(relaunch); }
    /// What opens a new instance; until it is set, that fails.
    using NewInstance = std::function<void(Completion completion)>;
    void setNewInstance(NewInstance newInstance) { newInstance_ = std::move(newInstance); }

    void setActivationPolicy(ActivationPolicy policy) override;
    void activateIgnoringOtherApps() override;
    void terminate() override;
    void onReopen(std::function<void()> handler) override;
    void openNewInstance(Completion completion) override;
    void openSuccessor(const std::filesystem::path& program, Completion completion) override;

private:
    // The services of this desktop are the X server's, so the windows must be too. Said here rather than in
    // the environment, which the programs opened from here inherit.
    std::string platformOption_ = "-platform", platformName_ = "xcb";
    std::array<char*, 4> arguments_;
    int argumentCount_ = 3;

    class Toolkit;
    std::unique_ptr<Toolkit> toolkit_;
    std::function<void()> reopenHandler_;
    Relaunch relaunch_;
    NewInstance newInstance_;
    enum class Reopening { none, awaitsHandler } reopening_ = Reopening::none;
};

} // namespace glimmerly

#pragma once

#include "base/Result.h"
#include "platform/Application.h"

#include <memory>

namespace glimmerly {

class QtApplication;
class Relaunch;
class SingleInstance;
class TrialStart;

/// The desktop that this process runs on: Qt's application with every service of the desktop, which it makes
/// the process's platform. One object a process; it must outlive every use of a service.
class Desktop {
public:
    /// Sets the process up on the X server that the environment names; an error when there is none. `program`
    /// is the name it was started by, and stays in use. `start`, which must outlive the object, ends when
    /// launching has finished.
    [[nodiscard]] static Result<std::unique_ptr<Desktop>> open(char* program, const BundleInfo& bundle,
                                                               TrialStart& start);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// Further starts that `instance`, which must outlive the main loop, hears of reach the application, and
    /// a new instance of the program gets its right. None: the right could not be claimed.
    void followStarts(SingleInstance* instance);
    /// Runs the main loop until the user, a signal or the session ends it. Returns the exit status.
    int run(ApplicationDelegate& delegate);

private:
    struct XServer;
    struct Services;
    Desktop(std::unique_ptr<QtApplication> application, XServer& server, const BundleInfo& bundle,
            TrialStart& start);

    std::unique_ptr<QtApplication> application_;
    std::unique_ptr<Services> services_;
    std::unique_ptr<Relaunch> relaunch_;
};

} // namespace glimmerly

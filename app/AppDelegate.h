#pragma once

#include "base/Observers.h"
#include "platform/Application.h"

namespace glimmerly {

/// Brings the long-lived services up when the process starts and down when it ends, each in a fixed order.
class AppDelegate : public ApplicationDelegate {
public:
    void applicationWillFinishLaunching() override;
    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override;

private:
    Observation colors_; ///< of the desktop, which the windows follow
};

} // namespace glimmerly

#pragma once

#include "platform/linux/updates/install/InstalledFolder.h"

#include <sys/types.h>

namespace glimmerly {

/// This process's start of the version that is installed. As long as the version before it is kept, it has
/// yet to show that it starts: should the process end before it has, another one, forked at the beginning,
/// puts the older version back and starts that.
class TrialStart {
public:
    explicit TrialStart(InstalledFolder installed) : installed_(std::move(installed)) {}
    TrialStart(const TrialStart&) = delete;
    TrialStart& operator=(const TrialStart&) = delete;

    [[nodiscard]] const InstalledFolder& installed() const { return installed_; }

    /// To be called while the process has one thread.
    void begin();
    /// The version has started, or another process of it runs: this one may end from here on.
    void end();

private:
    InstalledFolder installed_;
    pid_t watcher_ = 0; ///< 0: none
};

} // namespace glimmerly

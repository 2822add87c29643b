#pragma once

#include "base/Uuid.h"

#include <mutex>
#include <optional>

namespace glimmerly {

/// Which capture is the newest that has started. From any thread.
class ScreenshotCaptureSession {
public:
    [[nodiscard]] static ScreenshotCaptureSession& shared();

    void beginSession(const Uuid& id);
    [[nodiscard]] bool isCurrent(const Uuid& id) const;
    /// Leaves no session when `id` is the current one; a newer one stays.
    void endSessionIfCurrent(const Uuid& id);

private:
    mutable std::mutex mutex_;
    std::optional<Uuid> currentSessionID_;
};

} // namespace glimmerly

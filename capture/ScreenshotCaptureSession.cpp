#include "capture/ScreenshotCaptureSession.h"

namespace glimmerly {

ScreenshotCaptureSession& ScreenshotCaptureSession::shared() {
    static ScreenshotCaptureSession& instance = *new ScreenshotCaptureSession;
    return instance;
}

void ScreenshotCaptureSession::beginSession(const Uuid& id) {
    const std::lock_guard lock(mutex_);
    currentSessionID_ = id;
}

bool ScreenshotCaptureSession::isCurrent(const Uuid& id) const {
    const std::lock_guard lock(mutex_);
    return currentSessionID_ == id;
}

void ScreenshotCaptureSession::endSessionIfCurrent(const Uuid& id) {
    const std::lock_guard lock(mutex_);
    if (currentSessionID_ == id)
        currentSessionID_.reset();
}

} // namespace glimmerly

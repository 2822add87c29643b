#pragma once

#include "base/Error.h"

namespace glimmerly {

/// The capture service's own failures; all others are the platform's, passed through unchanged.
enum class ScreenCaptureServiceError {
    noMatchingDisplay, ///< the target screen has no display number, or no display to capture has it
    pngEncodingFailed, ///< the captured image could not be encoded
};

[[nodiscard]] inline Error makeError(ScreenCaptureServiceError ownCase) {
    return enumError("Glimmerly.ScreenCaptureServiceError", ownCase);
}

} // namespace glimmerly

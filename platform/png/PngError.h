#pragma once

#include "base/Error.h"

namespace glimmerly {

/// Why a picture could not be written or read as PNG.
enum class PngError {
    emptyPicture, ///< nothing to encode
    notPng,       ///< no PNG header
    damaged,      ///< a header, but what follows is not what it announces
    tooLarge,     ///< more pixels than this program will handle
    outOfMemory,
};

[[nodiscard]] inline Error makeError(PngError ownCase) {
    return enumError("Glimmerly.PngError", ownCase);
}

} // namespace glimmerly

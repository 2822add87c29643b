#pragma once

#include "platform/Updates.h"

namespace glimmerly {

/// The updater's error `code`, in words for the user; `cause` is what led to it. A full disk is told as such.
[[nodiscard]] Error updateError(UpdateErrorCode code, const std::optional<Error>& cause = {});

[[nodiscard]] inline bool isCode(const Error& error, UpdateErrorCode code) {
    return error.domain() == updateErrorDomain && error.code() == static_cast<int>(code);
}

/// Whether another try may go better without anybody doing something about it.
[[nodiscard]] bool mayWorkLater(const Error& error);

/// Whether all that is in the way of the update is that the program cannot put it in its own place here.
[[nodiscard]] bool canInstallByHand(const Error& error);

} // namespace glimmerly

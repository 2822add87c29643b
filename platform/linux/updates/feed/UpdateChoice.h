#pragma once

#include "platform/Updates.h"
#include "platform/linux/updates/feed/Appcast.h"

#include <optional>
#include <span>
#include <string>

namespace glimmerly {

/// What decides which item of a feed applies.
struct UpdateApplicability {
    std::string currentVersion;
    std::string systemVersion;  ///< that of the C library, which the program's archive is built against
    std::string architecture;   ///< that the program was built for
    std::string skippedVersion; ///< empty: none; a critical item cannot be skipped
};

/// The item to offer, or why there is none.
struct UpdateChoice {
    std::optional<AppcastItem> item{};
    NoUpdateReason reason = NoUpdateReason::unknown; ///< without an item
};

/// The newest item of `feed` that is newer than what runs and runs on this system; the first of those of the
/// same version. Items of a channel are for those who asked for it, which nobody can yet.
[[nodiscard]] UpdateChoice chooseUpdate(std::span<const AppcastItem> feed,
                                        const UpdateApplicability& applicability);

/// The C library's version.
[[nodiscard]] std::string runningSystemVersion();

} // namespace glimmerly

#include "app/ProgramBundle.h"

#include "base/BundleIdentifier.h"

#include <cstdlib>

namespace glimmerly {

/// What a build is given when it is configured, given here when the program starts.
BundleInfo programBundle() {
    const auto setting = [](const char* name) {
        const char* const value = std::getenv(name);
        return std::string(value != nullptr ? value : "");
    };
    return {.shortVersion = "1.4.2",
            .identifier = std::string(bundleIdentifier),
            .serviceBaseURL = setting("TEST_SERVICE_BASE_URL")};
}

} // namespace glimmerly

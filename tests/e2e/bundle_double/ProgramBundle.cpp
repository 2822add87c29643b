#include "app/ProgramBundle.h"

#include "base/BundleIdentifier.h"
#include "platform/linux/updates/install/InstalledFolder.h"
#include "platform/linux/updates/install/SelfCheck.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace glimmerly {

namespace {

/// Ends version 2.0 as a fault would, at the moment that a test names; never while it only checks itself.
void endIfTold(std::string_view moment) {
    const char* const told = std::getenv("TEST_END_OF_NEW_VERSION");
    const auto version = archiveVersionIn(InstalledFolder::ofThisProcess().path());
    std::ifstream file("/proc/self/cmdline");
    const std::string command(std::istreambuf_iterator<char>(file), {});
    if (told != nullptr && told == moment && version == "2.0" && !command.contains(selfCheckOption))
        ::raise(SIGKILL);
}

const bool isLoaded = (endIfTold("loading"), true);

} // namespace

/// What a build is given when it is configured, given here when the program starts.
BundleInfo programBundle() {
    endIfTold("starting");
    const auto setting = [](const char* name) {
        const char* const value = std::getenv(name);
        return std::string(value != nullptr ? value : "");
    };
    const auto orNone = [&](const char* name) {
        auto value = setting(name);
        return value.empty() ? std::nullopt : std::optional(std::move(value));
    };
    // What lies in an archive's folder is as old as that says.
    const auto installed = InstalledFolder::ofThisProcess().path();
    const std::string version = archiveVersionIn(installed).value_or("1.4.2");
    return {.shortVersion = version,
            .version = version,
            .identifier = std::string(bundleIdentifier),
            .serviceBaseURL = setting("TEST_SERVICE_BASE_URL"),
            .feedURL = orNone("TEST_FEED_URL"),
            .updatePublicKey = orNone("TEST_UPDATE_PUBLIC_KEY")};
}

} // namespace glimmerly

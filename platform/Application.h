#pragma once

#include "base/Error.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace glimmerly {

/// What the program knows of its own bundle; an entry that is missing or not a string is none.
struct BundleInfo {
    std::optional<std::string> name{};         ///< "CFBundleName"
    std::optional<std::string> shortVersion{}; ///< "CFBundleShortVersionString"
    std::optional<std::string> version{};      ///< "CFBundleVersion"
    std::optional<std::string> identifier{};
    /// The origin of the program's web service, as configured; empty: nothing is ever sent.
    std::string serviceBaseURL{};
    std::string websiteURL{};                       ///< of the product
    std::string donationURL{};                      ///< of the page for donations
    std::optional<std::string> feedURL{};           ///< "SUFeedURL", where updates are told of
    std::optional<double> scheduledCheckInterval{}; ///< "SUScheduledCheckInterval", in seconds
    std::optional<std::string> updatePublicKey{};   ///< Ed25519, Base64; none: no updates

    /// "CFBundleName", else "Glimmerly".
    [[nodiscard]] std::string applicationName() const;
    /// "Version " and the first non-empty of the two versions, else "Version unknown".
    [[nodiscard]] std::string versionText() const;
};

enum class ActivationPolicy { regular = 0, accessory = 1, prohibited = 2 };

/// Hears of this program's start and end: each once, in this order, on the main thread.
class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;

    virtual void applicationWillFinishLaunching() = 0;
    /// The main loop runs from here on.
    virtual void applicationDidFinishLaunching() = 0;
    /// The main loop has ended, or the desktop has gone.
    virtual void applicationWillTerminate() = 0;
};

/// This program as the desktop sees it.
class Application {
public:
    virtual ~Application() = default;

    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Brings this program forward, whatever is in front.
    virtual void activateIgnoringOtherApps() = 0;
    /// Ends the main loop, which runs the termination sequence.
    virtual void terminate() = 0;
    /// `handler` runs on the main thread whenever the user starts the program again while it runs, also for
    /// the starts since this one began. One handler for the life of the process.
    virtual void onReopen(std::function<void()> handler) = 0;
    /// Starts this program anew beside itself. `completion` runs on the main thread: without an error once
    /// the new one only waits for this one's end to take its place.
    virtual void openNewInstance(std::function<void(std::optional<Error>)> completion) = 0;
    /// The same for another version of this program, the file `program`.
    virtual void openSuccessor(const std::filesystem::path& program,
                               std::function<void(std::optional<Error>)> completion) = 0;
};

} // namespace glimmerly

#pragma once

#include <functional>
#include <optional>
#include <string>

namespace glimmerly {

/// What the program knows of its own bundle; an entry that is missing or not a string is none.
struct BundleInfo {
    std::optional<std::string> name;         ///< "CFBundleName"
    std::optional<std::string> shortVersion; ///< "CFBundleShortVersionString"
    std::optional<std::string> version;      ///< "CFBundleVersion"
    std::optional<std::string> identifier;

    /// "CFBundleName", else "Glimmerly".
    [[nodiscard]] std::string applicationName() const;
    /// "Version " and the first non-empty of the two versions, else "Version unknown".
    [[nodiscard]] std::string versionText() const;
};

enum class ActivationPolicy { regular = 0, accessory = 1, prohibited = 2 };

/// This program as the desktop sees it.
class Application {
public:
    virtual ~Application() = default;

    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Brings this program forward, whatever is in front.
    virtual void activateIgnoringOtherApps() = 0;
    /// Ends the main loop, which runs the termination sequence.
    virtual void terminate() = 0;
};

} // namespace glimmerly

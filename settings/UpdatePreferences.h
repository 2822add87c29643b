#pragma once

#include <functional>

namespace glimmerly {

/// Software updates as the settings window shows and changes them. Main thread only.
class UpdatePreferences {
public:
    virtual ~UpdatePreferences() = default;

    /// Whether a check that the user asks for can start now.
    [[nodiscard]] virtual bool canCheckForUpdates() const = 0;
    [[nodiscard]] virtual bool automaticallyChecksForUpdates() const = 0;
    [[nodiscard]] virtual bool automaticallyDownloadsUpdates() const = 0;
    /// Whether updates may be downloaded without being asked for.
    [[nodiscard]] virtual bool allowsAutomaticUpdates() const = 0;

    virtual void setAutomaticallyChecksForUpdates(bool checks) = 0;
    virtual void setAutomaticallyDownloadsUpdates(bool downloads) = 0;
    /// A check that the user asked for, which shows what it finds.
    virtual void checkForUpdates() = 0;

    /// `handler` runs after each change of any of the four, whoever made it. There is one.
    virtual void setOnChange(std::function<void()> handler) = 0;
};

} // namespace glimmerly

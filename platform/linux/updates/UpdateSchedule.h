#pragma once

#include "base/Clock.h"
#include "platform/Preferences.h"

#include <optional>
#include <string>

namespace glimmerly {

/// What the user wants of automatic updates, and when the next check is due: kept across launches.
class UpdateSchedule {
public:
    static constexpr std::string_view checksKey = "SUAutomaticallyChecksForUpdates";
    static constexpr std::string_view downloadsKey = "SUAutomaticallyDownloadsUpdates";
    static constexpr std::string_view intervalKey = "SUScheduledCheckInterval"; ///< seconds
    static constexpr std::string_view lastCheckKey = "SULastCheckTime";         ///< seconds since 1970
    static constexpr std::string_view launchedKey = "SUHasLaunchedBefore";
    static constexpr std::string_view skippedKey = "SUSkippedVersion";
    static constexpr std::string_view notInstalledKey = "SUNotInstalledAtQuit";
    static constexpr std::string_view notInstalledWhyKey = "SUNotInstalledAtQuitReason";
    static constexpr std::string_view notDownloadedKey = "SUNotDownloadedVersion";

    static constexpr std::chrono::seconds defaultInterval = std::chrono::days(1);
    static constexpr std::chrono::seconds shortestInterval = std::chrono::minutes(1);

    static constexpr std::chrono::seconds retryInterval = std::chrono::hours(1);

    enum class Launch { first, later };

    /// `bundleInterval`, in seconds, counts unless the preferences hold another. `preferences` must outlive
    /// this.
    UpdateSchedule(Preferences& preferences, std::optional<double> bundleInterval, WallClock clock);

    /// Called once, at launch.
    [[nodiscard]] Launch noteLaunch();

    /// None until the user has decided.
    [[nodiscard]] std::optional<bool> userWantsChecks() const { return boolean(checksKey); }
    void setUserWantsChecks(bool wants) { preferences_.setBool(checksKey, wants); }
    [[nodiscard]] bool userWantsDownloads() const { return boolean(downloadsKey).value_or(false); }
    void setUserWantsDownloads(bool wants) { preferences_.setBool(downloadsKey, wants); }

    [[nodiscard]] std::chrono::seconds interval() const;
    void noteCheck();
    /// The check found no server: the next one is due after `retryInterval`, or `interval` if that is less.
    void noteUnreachable();
    /// 0 when a check is due, as it is when the last one lies in the future.
    [[nodiscard]] std::chrono::seconds untilNextCheck() const;

    [[nodiscard]] std::string skippedVersion() const;
    void setSkippedVersion(const std::string& version) { preferences_.setData(skippedKey, version); }

    /// A version that the program's end did not install although it was ready, for the next launch to tell;
    /// told once.
    struct NotInstalled {
        std::string version;
        std::string why;
    };
    void noteNotInstalled(const NotInstalled& update);
    [[nodiscard]] std::optional<NotInstalled> takeNotInstalled();

    /// Returns whether the last download that failed was one of this version too.
    [[nodiscard]] bool noteNotDownloaded(const std::string& version);

private:
    void setLastCheck(WallTime time);
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const;
    [[nodiscard]] std::optional<double> number(std::string_view key) const;

    Preferences& preferences_;
    std::optional<double> bundleInterval_;
    WallClock clock_;
};

} // namespace glimmerly

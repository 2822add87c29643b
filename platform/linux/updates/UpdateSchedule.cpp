#include "platform/linux/updates/UpdateSchedule.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace glimmerly {

using std::chrono::seconds;

UpdateSchedule::UpdateSchedule(Preferences& preferences, std::optional<double> bundleInterval,
                               WallClock clock)
    : preferences_(preferences), bundleInterval_(bundleInterval), clock_(std::move(clock)) {}

UpdateSchedule::Launch UpdateSchedule::noteLaunch() {
    if (boolean(launchedKey).value_or(false))
        return Launch::later;
    preferences_.setBool(launchedKey, true);
    return Launch::first;
}

seconds UpdateSchedule::interval() const {
    constexpr double longest = 10.0 * 365 * 86'400;
    for (const auto& wanted : {number(intervalKey), bundleInterval_}) {
        if (wanted && std::isfinite(*wanted) && *wanted > 0)
            return std::max(shortestInterval, seconds(static_cast<std::int64_t>(std::min(*wanted, longest))));
    }
    return defaultInterval;
}

void UpdateSchedule::noteCheck() {
    setLastCheck(clock_());
}

void UpdateSchedule::noteUnreachable() {
    setLastCheck(clock_() - (interval() - std::min(interval(), retryInterval)));
}

void UpdateSchedule::setLastCheck(WallTime time) {
    const auto sinceEpoch = std::chrono::duration_cast<seconds>(time.time_since_epoch());
    preferences_.setData(lastCheckKey, std::to_string(sinceEpoch.count()));
}

seconds UpdateSchedule::untilNextCheck() const {
    const auto last = number(lastCheckKey);
    const double now = std::chrono::duration<double>(clock_().time_since_epoch()).count();
    if (!last || !(*last <= now)) // neither later nor no number
        return seconds(0);
    const double left = *last + static_cast<double>(interval().count()) - now;
    return seconds(static_cast<std::int64_t>(std::ceil(std::max(0.0, left))));
}

std::string UpdateSchedule::skippedVersion() const {
    return preferences_.data(skippedKey).value_or("");
}

void UpdateSchedule::noteNotInstalled(const NotInstalled& update) {
    preferences_.setData(notInstalledKey, update.version);
    preferences_.setData(notInstalledWhyKey, update.why);
}

std::optional<UpdateSchedule::NotInstalled> UpdateSchedule::takeNotInstalled() {
    const auto version = preferences_.data(notInstalledKey);
    if (!version)
        return std::nullopt;
    NotInstalled update{*version, preferences_.data(notInstalledWhyKey).value_or("")};
    preferences_.remove(notInstalledKey);
    preferences_.remove(notInstalledWhyKey);
    return update;
}

bool UpdateSchedule::noteNotDownloaded(const std::string& version) {
    const bool isSecondTime = preferences_.data(notDownloadedKey) == version;
    preferences_.setData(notDownloadedKey, version);
    return isSecondTime;
}

std::optional<bool> UpdateSchedule::boolean(std::string_view key) const {
    const auto text = preferences_.data(key);
    if (!text)
        return std::nullopt;
    return *text == "true" || *text == "1";
}

std::optional<double> UpdateSchedule::number(std::string_view key) const {
    const auto text = preferences_.data(key);
    double value = 0;
    if (!text || std::from_chars(text->data(), text->data() + text->size(), value).ec != std::errc())
        return std::nullopt;
    return value;
}

} // namespace glimmerly

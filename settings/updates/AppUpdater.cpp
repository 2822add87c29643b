#include "settings/updates/AppUpdater.h"

#include "diagnostics/GlimmerlyLog.h"
#include "platform/Platform.h"
#include "platform/Preferences.h"

#include <algorithm>
#include <array>

namespace glimmerly {

namespace {

std::string textOf(const Error& error) {
    return error.domain() + " " + std::to_string(error.code()) + ": " + error.description();
}

const char* textOf(NoUpdateReason reason) {
    switch (reason) {
    case NoUpdateReason::unknown:
        return "unknown";
    case NoUpdateReason::onLatestVersion:
        return "onLatestVersion";
    case NoUpdateReason::onNewerThanLatest:
        return "onNewerThanLatestVersion";
    case NoUpdateReason::systemIsTooOld:
        return "systemIsTooOld";
    case NoUpdateReason::skipped:
        return "skipped";
    }
    return "unknown";
}

std::string detailsOf(const NoUpdateFound& outcome) {
    std::string details = textOf(outcome.error);
    if (outcome.reason)
        details += std::string(" | Reason: ") + textOf(*outcome.reason);
    if (outcome.initiator)
        details += std::string(" | user_initiated: ") +
                   (*outcome.initiator == CheckInitiator::user ? "true" : "false");
    return details;
}

std::string detailsOf(const Error& error) {
    std::string details = "Description: " + error.description() + "\nDomain: " + error.domain() +
                          " code: " + std::to_string(error.code());
    if (error.failureReason() && !error.failureReason()->empty())
        details += "\nFailure reason: " + *error.failureReason();
    if (error.underlying() != nullptr)
        details += "\nUnderlying: " + textOf(*error.underlying());
    return details;
}

bool isNoFailure(const Error& error) {
    constexpr std::array codes{static_cast<int>(UpdateErrorCode::noUpdate),
                               static_cast<int>(UpdateErrorCode::cancelledByUser)};
    return error.domain() == updateErrorDomain && std::ranges::find(codes, error.code()) != codes.end();
}

} // namespace

AppUpdater& AppUpdater::shared() {
    static auto* const instance = [] {
        auto& platform = Platform::current();
        return new AppUpdater({.bundle = platform.bundle,
                               .application = platform.application,
                               .preferences = platform.preferences,
                               .updates = platform.updates});
    }();
    return *instance;
}

AppUpdater::AppUpdater(AppUpdaterServices services) : services_(std::move(services)) {
    keepToBundlesFeed();
    keepToBundlesInterval();
    updaterController_ = services_.updates.startController(*this);
}

void AppUpdater::keepToBundlesFeed() {
    if (!services_.bundle.feedURL)
        return;
    const auto stored = services_.preferences.data(feedURLKey);
    if (stored && *stored != *services_.bundle.feedURL)
        services_.preferences.remove(feedURLKey);
}

void AppUpdater::keepToBundlesInterval() {
    if (!services_.bundle.scheduledCheckInterval && services_.preferences.data(checkIntervalKey))
        services_.preferences.remove(checkIntervalKey);
}

void AppUpdater::checkForUpdates() {
    services_.application.activateIgnoringOtherApps();
    updaterController_->checkForUpdates();
}

void AppUpdater::updaterDidNotFindUpdate(const NoUpdateFound& outcome) {
    GlimmerlyLog::info(log_category::updates, "Sparkle did not surface a downloadable update",
                       {{"details", detailsOf(outcome)}});
}

void AppUpdater::updaterDidAbort(const Error& error) {
    if (isNoFailure(error))
        return;
    GlimmerlyLog::error(log_category::updates, "An error occurred while installing the update",
                        {{"details", detailsOf(error)}}, error);
}

void AppUpdater::updaterIsNotConfigured(const Error& error) {
    GlimmerlyLog::info(log_category::updates, "This build has no updates", {{"details", textOf(error)}});
}

} // namespace glimmerly

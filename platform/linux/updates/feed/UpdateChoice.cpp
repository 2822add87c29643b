#include "platform/linux/updates/feed/UpdateChoice.h"

#include "platform/linux/updates/feed/VersionOrder.h"

#include <gnu/libc-version.h>

namespace glimmerly {

namespace {

bool runsHere(const AppcastItem& item, const UpdateApplicability& applicability) {
    return item.minimumSystemVersion.empty() ||
           compareVersions(item.minimumSystemVersion, applicability.systemVersion) <= 0;
}

bool isBuiltFor(const AppcastItem& item, const std::string& architecture) {
    return item.architecture.empty() || item.architecture == architecture;
}

bool isSkipped(const AppcastItem& item, const UpdateApplicability& applicability) {
    return item.urgency != Urgency::critical && !applicability.skippedVersion.empty() &&
           item.version == applicability.skippedVersion;
}

void keepNewer(const AppcastItem*& newest, const AppcastItem& item) {
    if (newest == nullptr || compareVersions(item.version, newest->version) > 0)
        newest = &item;
}

} // namespace

UpdateChoice chooseUpdate(std::span<const AppcastItem> feed, const UpdateApplicability& applicability) {
    const AppcastItem* newest = nullptr;
    const AppcastItem* newestHere = nullptr;
    for (const auto& item : feed) {
        if (!item.channel.empty() || !isBuiltFor(item, applicability.architecture))
            continue;
        keepNewer(newest, item);
        if (runsHere(item, applicability))
            keepNewer(newestHere, item);
    }
    if (newest == nullptr)
        return {.reason = NoUpdateReason::unknown};
    const auto order = compareVersions(newest->version, applicability.currentVersion);
    if (order <= 0)
        return {.reason = order < 0 ? NoUpdateReason::onNewerThanLatest : NoUpdateReason::onLatestVersion};
    if (newestHere == nullptr || compareVersions(newestHere->version, applicability.currentVersion) <= 0)
        return {.reason = NoUpdateReason::systemIsTooOld};
    if (isSkipped(*newestHere, applicability))
        return {.reason = NoUpdateReason::skipped};
    return {.item = *newestHere};
}

std::string runningSystemVersion() {
    return ::gnu_get_libc_version();
}

} // namespace glimmerly

#pragma once

#include "base/Error.h"
#include "base/Observers.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace glimmerly {

/// The domain of every error of the updater.
inline constexpr std::string_view updateErrorDomain = "SUSparkleErrorDomain";

/// Its codes.
enum class UpdateErrorCode {
    feedInvalid = 1000,
    noUpdate = 1001, ///< not a failure: there is nothing to offer
    feedUnreachable = 1002,
    notConfigured = 1003, ///< the bundle names no feed, or no public key
    downloadFailed = 2001,
    archiveUnusable = 3000,
    signatureInvalid = 3001, ///< also when the archive's length is not the one that the feed tells
    versionUnexpected = 3002,
    doesNotRun = 3003, ///< the new version's program, tried before it is installed
    notReplaceable = 4001,
    alreadyInstalled = 4002, ///< while this version runs on
    notTakenBack = 4003,     ///< a version that was not relaunched
    notInstalled = 4005,
    notRelaunched = 4006,
    cancelledByUser = 4007, ///< not a failure either
};

/// Why a feed offers nothing; the numbers are part of what is logged.
enum class NoUpdateReason {
    unknown = 0,           ///< it has no item for this program
    onLatestVersion = 1,   ///< this version is the newest one
    onNewerThanLatest = 2, ///< this version is newer than every one
    systemIsTooOld = 3,    ///< there is a newer one, for a newer system
    skipped = 4,           ///< the user has skipped the newest one
};

enum class CheckInitiator { schedule, user };

/// A check that found nothing to offer.
struct NoUpdateFound {
    Error error;
    std::optional<NoUpdateReason> reason{};
    std::optional<CheckInitiator> initiator{};
};

/// Hears how checks and installations end. On the main thread.
class UpdaterDelegate {
public:
    virtual ~UpdaterDelegate() = default;

    virtual void updaterDidNotFindUpdate(const NoUpdateFound& outcome) = 0;
    /// After `updaterDidNotFindUpdate` too.
    virtual void updaterDidAbort(const Error& error) = 0;
    /// Once, when the updater starts and no check can ever be made.
    virtual void updaterIsNotConfigured(const Error& error) = 0;
};

enum class UpdaterFlag {
    canCheckForUpdates,
    automaticallyChecksForUpdates,
    automaticallyDownloadsUpdates,
    allowsAutomaticUpdates, ///< whether an update can be installed here without the user's help
};

/// Checks for newer versions of the program, by itself from time to time and when told to, and puts them in
/// its place. Main thread only.
class Updater {
public:
    using Observation = glimmerly::Observation;

    virtual ~Updater() = default;

    [[nodiscard]] virtual bool value(UpdaterFlag flag) const = 0;
    /// `handler` hears of the present value and of every new one, each on a later turn of the main loop.
    [[nodiscard]] virtual Observation observe(UpdaterFlag flag, std::function<void(bool)> handler) = 0;
    virtual void setAutomaticallyChecksForUpdates(bool checks) = 0;
    virtual void setAutomaticallyDownloadsUpdates(bool downloads) = 0;
};

/// An updater together with the dialogs through which it talks to the user.
class UpdaterController {
public:
    virtual ~UpdaterController() = default;

    [[nodiscard]] virtual Updater& updater() = 0;
    /// A check that the user asked for, which shows what it finds; one that is under way comes forward.
    virtual void checkForUpdates() = 0;
};

/// The desktop's way to update programs.
class UpdateFramework {
public:
    virtual ~UpdateFramework() = default;

    /// The process's one controller, its updater started. `delegate` must outlive it.
    [[nodiscard]] virtual std::unique_ptr<UpdaterController> startController(UpdaterDelegate& delegate) = 0;
    /// This version has started: what was kept for the case that it would not can go.
    virtual void applicationDidFinishLaunching() = 0;
    /// Gives up what is under way, and installs what waits for the program's end. Returns within a fraction
    /// of a second.
    virtual void applicationWillTerminate() = 0;
};

} // namespace glimmerly

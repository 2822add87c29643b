#include "platform/linux/updates/SoftwareUpdater.h"

#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "platform/linux/updates/UpdateError.h"
#include "platform/linux/updates/feed/UpdateChoice.h"
#include "platform/linux/updates/feed/VersionOrder.h"

#include <QSysInfo>
#include <QUrl>

#include <algorithm>
#include <cerrno>

namespace glimmerly {

SoftwareUpdater::SoftwareUpdater(SoftwareUpdaterServices services)
    : services_(std::move(services)), flags_(services_.mainQueue) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::VeryCoarseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] { scheduledTimeHasCome(); });
    flags_.set(UpdaterFlag::automaticallyChecksForUpdates,
               services_.schedule.userWantsChecks().value_or(false));
    flags_.set(UpdaterFlag::automaticallyDownloadsUpdates, services_.schedule.userWantsDownloads());
}

void SoftwareUpdater::start() {
    if (services_.work == nullptr)
        return services_.delegate.updaterIsNotConfigured(updateError(UpdateErrorCode::notConfigured));
    (void)noteReplaceability();
    const auto launch = services_.schedule.noteLaunch();
    enter(Phase::idle);
    const auto missed = services_.schedule.takeNotInstalled();
    if (missed && compareVersions(services_.currentVersion, missed->version) < 0)
        return tell(updateError(UpdateErrorCode::notInstalled, Error("GlimmerlyUpdate", 7, missed->why)),
                    Prominence::quiet);
    // Not at the first launch: nobody wants to be asked about updates of what they have not seen yet.
    if (!services_.schedule.userWantsChecks() && launch == UpdateSchedule::Launch::later) {
        enter(Phase::askingPermission);
        services_.dialogs.askForPermission([this](PermissionAnswer answer) { permissionAnswered(answer); });
    }
}

bool SoftwareUpdater::noteReplaceability() {
    const bool isReplaceable = services_.work->replaceability() == Replaceability::replaceable;
    flags_.set(UpdaterFlag::allowsAutomaticUpdates, isReplaceable);
    return isReplaceable;
}

void SoftwareUpdater::enter(Phase phase) {
    phase_ = phase;
    flags_.set(UpdaterFlag::canCheckForUpdates,
               services_.work != nullptr &&
                   (phase == Phase::idle || phase == Phase::ready || phase == Phase::askingPermission));
    if (phase == Phase::idle) {
        item_.reset();
        scheduleNextCheck();
    } else {
        timer_.stop();
    }
}

void SoftwareUpdater::scheduleNextCheck() {
    timer_.stop();
    if (services_.work == nullptr || phase_ != Phase::idle ||
        !flags_.value(UpdaterFlag::automaticallyChecksForUpdates))
        return;
    // The timer stands still while the machine sleeps, so it looks at the clock from time to time.
    constexpr std::chrono::milliseconds longestWait = std::chrono::hours(4);
    timer_.start(std::min<std::chrono::milliseconds>(services_.schedule.untilNextCheck(), longestWait));
}

std::optional<std::chrono::milliseconds> SoftwareUpdater::scheduledWait() const {
    return timer_.isActive() ? std::optional(timer_.intervalAsDuration()) : std::nullopt;
}

void SoftwareUpdater::scheduledTimeHasCome() {
    if (services_.schedule.untilNextCheck().count() > 0)
        return scheduleNextCheck();
    check(CheckInitiator::schedule);
}

void SoftwareUpdater::permissionAnswered(PermissionAnswer answer) {
    setAutomaticallyChecksForUpdates(answer == PermissionAnswer::check);
}

void SoftwareUpdater::setAutomaticallyChecksForUpdates(bool checks) {
    services_.schedule.setUserWantsChecks(checks);
    flags_.set(UpdaterFlag::automaticallyChecksForUpdates, checks);
    if (phase_ == Phase::askingPermission) { // which is answered with this
        services_.dialogs.close();
        enter(Phase::idle);
    }
    const bool isUnderWay = phase_ == Phase::checking || phase_ == Phase::downloading;
    if (!checks && isUnderWay && initiator_ == CheckInitiator::schedule)
        return abort(updateError(UpdateErrorCode::cancelledByUser), {});
    scheduleNextCheck();
}

void SoftwareUpdater::setAutomaticallyDownloadsUpdates(bool downloads) {
    services_.schedule.setUserWantsDownloads(downloads);
    flags_.set(UpdaterFlag::automaticallyDownloadsUpdates, downloads);
    if (!downloads && phase_ == Phase::downloading && initiator_ == CheckInitiator::schedule)
        abort(updateError(UpdateErrorCode::cancelledByUser), {});
}

void SoftwareUpdater::checkForUpdates() {
    const bool isInBackground = initiator_ == CheckInitiator::schedule;
    initiator_ = CheckInitiator::user;
    if (services_.work == nullptr)
        return services_.dialogs.showError(updateError(UpdateErrorCode::notConfigured), Prominence::inFront,
                                           [this](ErrorAnswer) { services_.dialogs.close(); });
    if (phase_ == Phase::idle || phase_ == Phase::askingPermission) // asked again at the next launch
        check(CheckInitiator::user);
    else if (phase_ == Phase::ready)
        showReady(Prominence::inFront);
    else if (phase_ == Phase::checking && isInBackground)
        showChecking();
    else if (phase_ == Phase::downloading && isInBackground)
        showDownloading();
    else
        services_.dialogs.bringForward();
}

void SoftwareUpdater::check(CheckInitiator initiator) {
    enter(Phase::checking);
    initiator_ = initiator;
    services_.schedule.noteCheck();
    if (initiator == CheckInitiator::user)
        showChecking();
    services_.work->fetchFeed([this](const auto& feed) { feedArrived(feed); });
}

void SoftwareUpdater::showChecking() {
    services_.dialogs.showChecking([this] { cancelledByUser(); });
}

void SoftwareUpdater::feedArrived(const UpdateWork::Feed& feed) {
    const bool isUser = initiator_ == CheckInitiator::user;
    const bool isReplaceable = noteReplaceability();
    if (!feed) {
        if (isCode(feed.error(), UpdateErrorCode::feedUnreachable))
            services_.schedule.noteUnreachable();
        return abort(feed.error(), isUser ? std::optional(Prominence::inFront) : std::nullopt);
    }
    const auto choice =
        chooseUpdate(*feed, {.currentVersion = services_.currentVersion,
                             .systemVersion = runningSystemVersion(),
                             .architecture = QSysInfo::buildCpuArchitecture().toStdString(),
                             .skippedVersion = isUser ? "" : services_.schedule.skippedVersion()});
    if (!choice.item)
        return nothingToOffer(choice.reason);
    item_ = choice.item;
    // A critical version is offered although it was skipped, or did not start when it was installed.
    const bool mayDownload = flags_.value(UpdaterFlag::automaticallyDownloadsUpdates) && isReplaceable &&
                             item_->version != unusableVersion_ &&
                             item_->version != services_.schedule.skippedVersion();
    if (!isUser && mayDownload)
        return download(ReadyNews::unheardOf);
    offer(isUser ? Prominence::inFront : Prominence::quiet);
}

void SoftwareUpdater::nothingToOffer(NoUpdateReason reason) {
    const Error error = updateError(UpdateErrorCode::noUpdate);
    enter(Phase::telling);
    services_.delegate.updaterDidNotFindUpdate({.error = error, .reason = reason, .initiator = initiator_});
    services_.delegate.updaterDidAbort(error);
    if (initiator_ == CheckInitiator::schedule)
        return enter(Phase::idle);
    services_.dialogs.showUpToDate(services_.currentVersion, reason, [this] {
        services_.dialogs.close();
        enter(Phase::idle);
    });
}

void SoftwareUpdater::offer(Prominence prominence) {
    enter(Phase::offering);
    services_.dialogs.showAvailable({.item = *item_,
                                     .currentVersion = services_.currentVersion,
                                     .replaceability = services_.work->replaceability()},
                                    prominence, [this](UpdateAnswer answer) { offerAnswered(answer); });
}

void SoftwareUpdater::offerAnswered(UpdateAnswer answer) {
    if (answer == UpdateAnswer::install) {
        initiator_ = CheckInitiator::user;
        return download(ReadyNews::accepted);
    }
    if (answer == UpdateAnswer::skip)
        services_.schedule.setSkippedVersion(item_->version);
    if (answer == UpdateAnswer::openDownloadPage)
        openDownloadPage();
    services_.dialogs.close();
    enter(Phase::idle);
}

void SoftwareUpdater::openDownloadPage() {
    const QUrl own(item_ ? QString::fromStdString(item_->link) : QString(), QUrl::StrictMode);
    const bool isPage = own.scheme() == "https" && !own.host().isEmpty();
    services_.dialogs.openPage(isPage ? item_->link : services_.downloadPage);
}

void SoftwareUpdater::download(ReadyNews news) {
    enter(Phase::downloading);
    readyNews_ = news;
    progress_ = {.received = 0, .total = item_->enclosure.length};
    if (initiator_ == CheckInitiator::user)
        showDownloading();
    services_.work->prepare(
        *item_,
        [this](DownloadProgress progress) {
            progress_ = progress;
            if (initiator_ == CheckInitiator::user)
                services_.dialogs.showProgress(progress);
        },
        [this](const Result<void>& outcome) { prepared(outcome); });
}

void SoftwareUpdater::showDownloading() {
    services_.dialogs.showDownloading(*item_, [this] { cancelledByUser(); });
    services_.dialogs.showProgress(progress_);
}

void SoftwareUpdater::prepared(const Result<void>& outcome) {
    if (!outcome)
        return notPrepared(outcome.error());
    enter(Phase::ready);
    // Minutes after the click: who types elsewhere by now must not press its button.
    showReady(Prominence::quiet);
}

void SoftwareUpdater::notPrepared(const Error& error) {
    if (initiator_ == CheckInitiator::user)
        return abort(error, Prominence::quiet);
    const bool failsEachDay = isCode(error, UpdateErrorCode::downloadFailed) &&
                              services_.schedule.noteNotDownloaded(item_->version);
    if (mayWorkLater(error) && !failsEachDay)
        return abort(error, {});
    // Or nobody would ever know that there is a newer version.
    services_.work->cancel();
    services_.delegate.updaterDidAbort(error);
    unusableVersion_ = item_->version;
    offer(Prominence::quiet);
}

void SoftwareUpdater::showReady(Prominence prominence) {
    services_.dialogs.showReady(*item_, readyNews_, prominence,
                                [this](ReadyAnswer answer) { readyAnswered(answer); });
}

void SoftwareUpdater::readyAnswered(ReadyAnswer answer) {
    if (answer == ReadyAnswer::installAndRelaunch) {
        if (auto installed = services_.work->install(); !installed)
            return abort(installed.error(), Prominence::inFront);
        return openInstalled([this](const auto& error) {
            if (!error)
                services_.mainQueue.post([&application = services_.application] { application.terminate(); });
        });
    }
    services_.dialogs.close();
    if (answer == ReadyAnswer::later)
        return; // it is installed when the program ends
    services_.schedule.setSkippedVersion(item_->version);
    services_.work->cancel();
    enter(Phase::idle);
}

/// False when it could not be put in this one's place, which the next launch tells.
bool SoftwareUpdater::installForNextLaunch() {
    auto installed = services_.work->install();
    if (!installed) {
        services_.schedule.noteNotInstalled({item_->version, installed.error().description()});
        services_.dialogs.close();
        abort(installed.error(), {});
    }
    return installed.has_value();
}

void SoftwareUpdater::openInstalled(RelaunchCompletion completion) {
    enter(Phase::installing);
    services_.dialogs.showInstalling(*item_);
    services_.application.openSuccessor(services_.program,
                                        [this, completion = std::move(completion)](const auto& error) {
                                            if (error)
                                                takeBack(*error);
                                            completion(error);
                                        });
}

void SoftwareUpdater::takeBack(const Error& error) {
    const bool hasEnded = error.domain() == "POSIX" && error.code() == ESRCH;
    if (hasEnded) // it would by itself again
        services_.schedule.setSkippedVersion(item_->version);
    const auto reverted = services_.work->revert();
    abort(reverted ? updateError(UpdateErrorCode::notRelaunched, error) : reverted.error(),
          Prominence::inFront);
}

void SoftwareUpdater::newerVersionDidNotStart(const std::string& version) {
    if (services_.work == nullptr)
        return;
    services_.schedule.setSkippedVersion(version); // it would be installed by itself again
    abort(updateError(UpdateErrorCode::notRelaunched,
                      Error("GlimmerlyUpdate", 6, "The version " + version + " ended while it started.")),
          Prominence::quiet);
}

void SoftwareUpdater::openNewInstance(RelaunchCompletion completion) {
    if (phase_ == Phase::ready && installForNextLaunch())
        openInstalled(std::move(completion));
    else
        services_.application.openSuccessor(services_.program, std::move(completion));
}

void SoftwareUpdater::cancelledByUser() {
    services_.dialogs.close();
    abort(updateError(UpdateErrorCode::cancelledByUser), {});
}

void SoftwareUpdater::abort(const Error& error, std::optional<Prominence> telling) {
    services_.work->cancel();
    services_.delegate.updaterDidAbort(error);
    if (!telling)
        return enter(Phase::idle);
    tell(error, *telling);
}

void SoftwareUpdater::tell(const Error& error, Prominence prominence) {
    enter(Phase::telling);
    services_.dialogs.showError(error, prominence, [this](ErrorAnswer answer) {
        if (answer == ErrorAnswer::openDownloadPage)
            openDownloadPage();
        services_.dialogs.close();
        enter(Phase::idle);
    });
}

void SoftwareUpdater::applicationWillTerminate() {
    if (services_.work == nullptr)
        return;
    if (phase_ == Phase::ready) {
        (void)installForNextLaunch();
    } else if (phase_ != Phase::installing) {
        services_.work->cancel();
        services_.work->waitForCancellation();
    }
    timer_.stop();
}

} // namespace glimmerly

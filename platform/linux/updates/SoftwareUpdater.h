#pragma once

#include "platform/linux/updates/UpdateDialogs.h"
#include "platform/linux/updates/UpdateSchedule.h"
#include "platform/linux/updates/UpdateWork.h"
#include "platform/linux/updates/UpdaterFlags.h"

#include <QObject>
#include <QTimer>

#include <filesystem>
#include <optional>

namespace glimmerly {

class Application;
class MainQueue;

/// What the updater works with; all of it must outlive it.
struct SoftwareUpdaterServices {
    MainQueue& mainQueue;
    Application& application;
    UpdateDialogs& dialogs;
    UpdaterDelegate& delegate;
    UpdateSchedule& schedule;
    UpdateWork* work; ///< none: the bundle names no feed, or no public key
    std::string currentVersion;
    std::filesystem::path program; ///< where this version lies, or the one that was installed in its place
    std::string downloadPage{};    ///< for items that name none
};

/// Takes an update from the check to the relaunch, one at a time.
class SoftwareUpdater final : public QObject, public Updater {
public:
    using RelaunchCompletion = std::function<void(std::optional<Error>)>;

    explicit SoftwareUpdater(SoftwareUpdaterServices services);

    /// Called once: from here on checks are made as scheduled.
    void start();
    /// The version that was installed in this one's place ended before it had started, and this one is back.
    void newerVersionDidNotStart(const std::string& version);
    /// How long is waited, from when that was last decided, before a check by itself is considered; none
    /// while no such check will come.
    [[nodiscard]] std::optional<std::chrono::milliseconds> scheduledWait() const;
    /// A check that the user asked for.
    void checkForUpdates();
    /// Starts the program anew, as `Application::openNewInstance`: the version that is ready, if there is
    /// one, which is installed for it.
    void openNewInstance(RelaunchCompletion completion);
    /// Gives up what is under way; a version that is ready is put in this one's place.
    void applicationWillTerminate();

    [[nodiscard]] bool value(UpdaterFlag flag) const override { return flags_.value(flag); }
    [[nodiscard]] Observation observe(UpdaterFlag flag, std::function<void(bool)> handler) override {
        return flags_.observe(flag, std::move(handler));
    }
    void setAutomaticallyChecksForUpdates(bool checks) override;
    void setAutomaticallyDownloadsUpdates(bool downloads) override;

private:
    enum class Phase {
        idle,
        askingPermission,
        checking,
        telling, ///< how it ended, until the user has read it
        offering,
        downloading,
        ready, ///< a version waits for a click or for the program's end
        installing,
    };

    /// Whether an update can be put in this program's place: the user may have changed the folder since.
    [[nodiscard]] bool noteReplaceability();
    void enter(Phase phase);
    void scheduleNextCheck();
    void scheduledTimeHasCome();
    void permissionAnswered(PermissionAnswer answer);

    void check(CheckInitiator initiator);
    void feedArrived(const UpdateWork::Feed& feed);
    void nothingToOffer(NoUpdateReason reason);
    void offer(Prominence prominence);
    void offerAnswered(UpdateAnswer answer);
    void openDownloadPage();

    void download(ReadyNews news);
    void prepared(const Result<void>& outcome);
    void notPrepared(const Error& error);
    void showReady(Prominence prominence);
    void readyAnswered(ReadyAnswer answer);
    [[nodiscard]] bool installForNextLaunch();
    void openInstalled(RelaunchCompletion completion);
    void takeBack(const Error& error);

    void showChecking();
    void showDownloading();
    void cancelledByUser();
    /// Ends the update at hand: the delegate hears of it, and the user when there is a way to tell them.
    void abort(const Error& error, std::optional<Prominence> telling);
    void tell(const Error& error, Prominence prominence);

    SoftwareUpdaterServices services_;
    UpdaterFlags flags_;
    QTimer timer_;
    Phase phase_ = Phase::idle;
    CheckInitiator initiator_ = CheckInitiator::schedule; ///< of the update at hand
    DownloadProgress progress_;
    std::optional<AppcastItem> item_; ///< that is offered, downloaded or ready
    ReadyNews readyNews_ = ReadyNews::accepted;
    std::string unusableVersion_; ///< that could not be made ready in the background
};

} // namespace glimmerly

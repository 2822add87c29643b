#include "platform/linux/updates/SoftwareUpdater.h"

#include "platform/linux/updates/UpdateError.h"
#include "tests/support/FakeApplication.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakePreferences.h"
#include "tests/support/FakeUpdateDialogs.h"
#include "tests/support/desktop/WaitUntil.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using namespace std::chrono_literals;

/// Waits for the test to say how each step goes.
struct FakeWork : UpdateWork {
    void fetchFeed(std::function<void(Feed)> completion) override { fed = std::move(completion); }
    void prepare(const AppcastItem&, std::function<void(DownloadProgress)> progress,
                 std::function<void(Result<void>)> completion) override {
        progressed = std::move(progress);
        prepared = std::move(completion);
    }
    void cancel() override { ++cancellations; }
    void waitForCancellation() override {}
    [[nodiscard]] Replaceability replaceability() const override { return kind; }
    Result<void> install() override {
        ++installs;
        return installOutcome;
    }
    Result<void> revert() override {
        ++reverts;
        return {};
    }

    std::function<void(Feed)> fed;
    std::function<void(DownloadProgress)> progressed;
    std::function<void(Result<void>)> prepared;
    Replaceability kind = Replaceability::replaceable;
    Result<void> installOutcome;
    int cancellations = 0;
    int installs = 0;
    int reverts = 0;
};

struct RecordingDelegate : UpdaterDelegate {
    void updaterDidNotFindUpdate(const NoUpdateFound& outcome) override { notFound.push_back(outcome); }
    void updaterDidAbort(const Error& error) override { aborted.push_back(error.code()); }
    void updaterIsNotConfigured(const Error&) override { ++notConfigured; }

    std::vector<NoUpdateFound> notFound;
    std::vector<int> aborted;
    int notConfigured = 0;
};

AppcastItem itemOf(const std::string& version) {
    return {.version = version,
            .link = "https://a.example/page",
            .enclosure = {.url = "https://a.example/a", .length = 100}};
}

class SoftwareUpdaterTest : public testing::Test {
protected:
    void launch(UpdateWork* with, const std::string& version = "1.0") {
        updater.emplace(SoftwareUpdaterServices{.mainQueue = mainQueue,
                                                .application = application,
                                                .dialogs = dialogs,
                                                .delegate = delegate,
                                                .schedule = schedule,
                                                .work = with,
                                                .currentVersion = version,
                                                .program = "/apps/G/bin/glimmerly"});
        updater->start();
    }
    void launch() { launch(&work); }
    void userAllowedChecks() {
        preferences.setBool(UpdateSchedule::checksKey, true);
        preferences.setBool(UpdateSchedule::launchedKey, true);
    }
    /// Waits until a check has begun by itself.
    [[nodiscard]] bool checksByItself() {
        work.fed = {};
        return waitUntil([this] {
            QCoreApplication::processEvents();
            return static_cast<bool>(work.fed);
        });
    }
    [[nodiscard]] bool canCheck() const { return updater->value(UpdaterFlag::canCheckForUpdates); }
    void userAccepts(const std::string& version) {
        updater->checkForUpdates();
        work.fed({{itemOf(version)}});
        dialogs.offer(UpdateAnswer::install);
        work.prepared({});
    }

    WallTime now{std::chrono::days(20'000)};
    FakeMainQueue mainQueue;
    FakeApplication application;
    FakeUpdateDialogs dialogs;
    FakePreferences preferences;
    RecordingDelegate delegate;
    FakeWork work;
    UpdateSchedule schedule{preferences, std::nullopt, [this] { return now; }};
    std::optional<SoftwareUpdater> updater;
};

TEST_F(SoftwareUpdaterTest, TakesAnUpdateFromTheCheckToTheRelaunch) {
    launch();
    EXPECT_TRUE(canCheck());
    updater->checkForUpdates();
    EXPECT_EQ(dialogs.shown, "checking");
    EXPECT_FALSE(canCheck()) << "never two at once";
    const auto fed = std::exchange(work.fed, {});
    updater->checkForUpdates();
    EXPECT_EQ(dialogs.broughtForward, 1);
    EXPECT_FALSE(work.fed);

    fed({{itemOf("1.1")}});
    EXPECT_EQ(dialogs.shown, "available 1.1");
    EXPECT_EQ(dialogs.prominence, Prominence::inFront);
    dialogs.offer(UpdateAnswer::install);
    EXPECT_EQ(dialogs.shown, "downloading");
    work.progressed({.received = 50, .total = 100});
    EXPECT_EQ(dialogs.progress.received, 50u);
    work.prepared({});
    EXPECT_EQ(dialogs.shown, "ready");
    EXPECT_EQ(work.installs, 0) << "nothing without a click";
    dialogs.ready(ReadyAnswer::installAndRelaunch);
    EXPECT_EQ(dialogs.shown, "installing");
    EXPECT_EQ(work.installs, 1);
    ASSERT_EQ(application.successors.size(), 1u);
    EXPECT_EQ(application.successors[0], "/apps/G/bin/glimmerly");
    application.newInstances.back()(std::nullopt);
    mainQueue.runAll();
    EXPECT_EQ(application.terminations, 1);
    updater->applicationWillTerminate();
    EXPECT_EQ(work.installs, 1) << "once";
    EXPECT_TRUE(delegate.aborted.empty());
}

TEST_F(SoftwareUpdaterTest, EveryFailureIsToldOnceAndTheNextCheckCanBegin) {
    launch();
    const auto failing = [](UpdateErrorCode code) { return failure(updateError(code)); };
    const struct {
        const char* name;
        std::function<void()> happens;
        int code;
        std::string shown;
    } cases[] = {
        {"unreachable", [&] { work.fed(failing(UpdateErrorCode::feedUnreachable)); }, 1002, "error 1002"},
        {"cancelled while checking", [&] { dialogs.acknowledge(); }, 4007, "nothing"},
        {"cancelled while downloading",
         [&] {
             work.fed({{itemOf("2")}});
             dialogs.offer(UpdateAnswer::install);
             dialogs.acknowledge();
         },
         4007, "nothing"},
        {"not to be trusted",
         [&] {
             work.fed({{itemOf("2")}});
             dialogs.offer(UpdateAnswer::install);
             work.prepared(failing(UpdateErrorCode::signatureInvalid));
         },
         3001, "error 3001"},
        {"a folder that cannot be replaced, found out too late to offer the page instead",
         [&] {
             work.fed({{itemOf("2")}});
             dialogs.offer(UpdateAnswer::install);
             work.prepared(failing(UpdateErrorCode::notReplaceable));
             dialogs.choosePage();
             EXPECT_EQ(dialogs.page, "https://a.example/page");
         },
         4001, "nothing"},
        {"not installed",
         [&] {
             work.installOutcome = failing(UpdateErrorCode::notInstalled);
             userAccepts("2");
             dialogs.ready(ReadyAnswer::installAndRelaunch);
             work.installOutcome = {};
         },
         4005, "error 4005"},
        {"not started",
         [&] {
             userAccepts("2");
             dialogs.ready(ReadyAnswer::installAndRelaunch);
             application.newInstances.back()(Error::posix(ESRCH, "gone"));
         },
         4006, "error 4006"},
    };
    for (const auto& [name, happens, code, shown] : cases) {
        updater->checkForUpdates();
        happens();
        EXPECT_EQ(dialogs.shown, shown) << name;
        EXPECT_EQ(std::exchange(delegate.aborted, {}), std::vector<int>{code}) << name;
        EXPECT_EQ(std::exchange(work.cancellations, 0), 1) << name;
        if (dialogs.shown != "nothing")
            dialogs.acknowledge();
        EXPECT_TRUE(canCheck()) << name;
        EXPECT_EQ(dialogs.shown, "nothing") << name;
    }
    EXPECT_EQ(work.reverts, 1);
    EXPECT_EQ(application.terminations, 0);
}

TEST_F(SoftwareUpdaterTest, OpeningTheProgramAnewInstallsWhatIsReadyFirst) {
    launch();
    std::vector<bool> opened;
    const auto open = [&] {
        updater->openNewInstance([&](const auto& error) { opened.push_back(!error); });
        EXPECT_EQ(application.successors.back(), "/apps/G/bin/glimmerly");
    };
    open();
    EXPECT_EQ(work.installs, 0);
    userAccepts("2");
    open();
    EXPECT_EQ(work.installs, 1);
    application.newInstances.back()(Error::posix(ESRCH, "gone"));
    EXPECT_EQ(work.reverts, 1);
    EXPECT_EQ(dialogs.shown, "error 4006");
    EXPECT_EQ(opened, std::vector<bool>{false});
    dialogs.acknowledge();
    userAccepts("2");
    open();
    application.newInstances.back()(std::nullopt);
    EXPECT_EQ(opened, (std::vector<bool>{false, true}));
    updater->applicationWillTerminate();
    EXPECT_EQ(work.installs, 2);

    launch();
    userAccepts("2");
    work.installOutcome = failure(updateError(UpdateErrorCode::notInstalled));
    open();
    EXPECT_EQ(application.successors.size(), 4u) << "as this version, then";
}

TEST_F(SoftwareUpdaterTest, AVersionThatDidNotStartIsToldOfAndNotInstalledByItselfAgain) {
    userAllowedChecks();
    launch();
    updater->setAutomaticallyDownloadsUpdates(true);
    updater->newerVersionDidNotStart("2");
    EXPECT_EQ(dialogs.shown, "error 4006");
    EXPECT_EQ(dialogs.prominence, Prominence::quiet) << "nobody has just asked for it";
    EXPECT_EQ(delegate.aborted, std::vector<int>{4006});
    dialogs.acknowledge();
    ASSERT_TRUE(checksByItself());
    work.fed({{itemOf("2")}});
    EXPECT_EQ(delegate.notFound.at(0).reason, NoUpdateReason::skipped);
    now += 25h;
    launch();
    ASSERT_TRUE(checksByItself());
    auto critical = itemOf("2");
    critical.urgency = Urgency::critical;
    work.fed({{critical}});
    EXPECT_EQ(dialogs.shown, "available 2");
    EXPECT_FALSE(work.prepared) << "it would be installed at each end";
}

TEST_F(SoftwareUpdaterTest, NothingToOfferIsNoFailure) {
    launch();
    updater->checkForUpdates();
    work.fed({{itemOf("0.9")}});
    EXPECT_EQ(dialogs.shown, "up to date");
    ASSERT_EQ(delegate.notFound.size(), 1u);
    EXPECT_EQ(delegate.notFound[0].error.code(), 1001);
    EXPECT_EQ(delegate.notFound[0].reason, NoUpdateReason::onNewerThanLatest);
    EXPECT_EQ(delegate.notFound[0].initiator, CheckInitiator::user);
    EXPECT_EQ(delegate.aborted, std::vector<int>{1001});
    dialogs.acknowledge();
    EXPECT_TRUE(canCheck());
}

TEST_F(SoftwareUpdaterTest, LaterSkippingAndTheDownloadPageInstallNothing) {
    userAllowedChecks();
    work.kind = Replaceability::managedElsewhere;
    launch();
    EXPECT_FALSE(updater->value(UpdaterFlag::allowsAutomaticUpdates));
    const auto answer = [&](UpdateAnswer with) {
        updater->checkForUpdates();
        work.fed({{itemOf("2")}});
        dialogs.offer(with);
        EXPECT_EQ(dialogs.shown, "nothing");
        EXPECT_TRUE(canCheck());
    };
    answer(UpdateAnswer::openDownloadPage);
    EXPECT_EQ(dialogs.page, "https://a.example/page");
    answer(UpdateAnswer::later);
    answer(UpdateAnswer::skip);
    answer(UpdateAnswer::later); // who asks is told of a skipped version too

    now += 25h;
    ASSERT_TRUE((updater->setAutomaticallyChecksForUpdates(true), checksByItself()));
    work.fed({{itemOf("2")}});
    EXPECT_EQ(dialogs.shown, "nothing");
    EXPECT_EQ(delegate.notFound.at(0).reason, NoUpdateReason::skipped);
    updater->applicationWillTerminate();
    EXPECT_EQ(work.installs, 0);
}

TEST_F(SoftwareUpdaterTest, ChecksByItselfOnceAllowedAndNeverAtTheFirstLaunch) {
    launch();
    EXPECT_EQ(dialogs.shown, "nothing");
    EXPECT_FALSE(updater->scheduledWait()) << "the first launch";
    launch();
    EXPECT_EQ(dialogs.shown, "permission");
    EXPECT_FALSE(updater->scheduledWait());
    updater->checkForUpdates();
    EXPECT_EQ(dialogs.shown, "checking") << "in place of the question";
    dialogs.acknowledge();
    launch();
    EXPECT_EQ(dialogs.shown, "permission") << "unanswered";
    updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(dialogs.shown, "nothing") << "the switch answers";
    preferences.remove(UpdateSchedule::checksKey);
    preferences.remove(UpdateSchedule::lastCheckKey);
    delegate.aborted.clear();
    launch();
    dialogs.permission(PermissionAnswer::doNotCheck);
    launch();
    EXPECT_EQ(dialogs.shown, "nothing") << "asked once";
    EXPECT_FALSE(updater->scheduledWait());

    updater->setAutomaticallyChecksForUpdates(true);
    ASSERT_TRUE(checksByItself());
    EXPECT_EQ(dialogs.shown, "nothing") << "in the background";
    work.fed(failure(updateError(UpdateErrorCode::feedUnreachable)));
    EXPECT_EQ(dialogs.shown, "nothing");
    EXPECT_EQ(delegate.aborted, std::vector<int>{1002});
    launch();
    EXPECT_EQ(updater->scheduledWait(), 1h) << "not at once";
    now += 1h;
    launch();
    ASSERT_TRUE(checksByItself());
    updater->checkForUpdates();
    EXPECT_EQ(dialogs.shown, "checking") << "the user joins in";
    work.fed({{itemOf("2")}});
    EXPECT_EQ(dialogs.prominence, Prominence::inFront);
}

TEST_F(SoftwareUpdaterTest, DownloadsInTheBackgroundAndInstallsWithAClickOrAtTheEnd) {
    userAllowedChecks();
    launch();
    updater->setAutomaticallyDownloadsUpdates(true);
    work.kind = Replaceability::inSharedFolder; // since the launch
    ASSERT_TRUE(checksByItself());
    work.fed({{itemOf("2")}});
    EXPECT_EQ(dialogs.shown, "available 2");
    EXPECT_FALSE(updater->value(UpdaterFlag::allowsAutomaticUpdates));
    work.kind = Replaceability::replaceable;
    now += 25h;
    dialogs.offer(UpdateAnswer::later);
    ASSERT_TRUE(checksByItself());
    work.fed({{itemOf("2")}});
    EXPECT_EQ(dialogs.shown, "nothing");
    ASSERT_TRUE(work.prepared);
    EXPECT_FALSE(canCheck());
    work.prepared({});
    EXPECT_EQ(dialogs.shown, "ready, unheard of");
    EXPECT_EQ(dialogs.prominence, Prominence::quiet);
    dialogs.ready(ReadyAnswer::later);
    EXPECT_EQ(dialogs.shown, "nothing");
    EXPECT_TRUE(canCheck());
    updater->checkForUpdates();
    EXPECT_EQ(dialogs.shown, "ready, unheard of");
    EXPECT_EQ(work.installs, 0);
    work.installOutcome = failure(updateError(UpdateErrorCode::notInstalled));
    updater->applicationWillTerminate();
    EXPECT_EQ(work.installs, 1);
    const auto stored = preferences.entries;
    for (const char* shown : {"error 4005", "nothing"}) { // told once
        dialogs.close();
        launch();
        EXPECT_EQ(dialogs.shown, shown);
    }
    preferences.entries = stored;
    launch(&work, "2");
    EXPECT_EQ(dialogs.shown, "nothing") << "somebody has installed it by hand";
}

TEST_F(SoftwareUpdaterTest, WhatTheBackgroundCannotMakeReadyIsOfferedAndNotFetchedAgain) {
    userAllowedChecks();
    launch();
    updater->setAutomaticallyDownloadsUpdates(true);
    for (const char* shown : {"nothing", "available 2"}) {
        ASSERT_TRUE(checksByItself());
        work.fed({{itemOf("2")}});
        std::exchange(work.prepared, {})(failure(updateError(UpdateErrorCode::downloadFailed)));
        EXPECT_EQ(dialogs.shown, shown) << "a line may be cut once, but not each day";
        now += 25h;
        launch();
    }
    delegate.aborted.clear();
    for (const bool isFirst : {true, false}) {
        ASSERT_TRUE(checksByItself());
        work.fed({{itemOf("2")}});
        EXPECT_EQ(static_cast<bool>(work.prepared), isFirst);
        if (isFirst)
            std::exchange(work.prepared, {})(failure(updateError(UpdateErrorCode::notReplaceable)));
        EXPECT_EQ(dialogs.shown, "available 2");
        EXPECT_EQ(dialogs.prominence, Prominence::quiet);
        now += 25h;
        dialogs.offer(UpdateAnswer::later);
    }
    EXPECT_EQ(delegate.aborted, std::vector<int>{4001});
}

TEST_F(SoftwareUpdaterTest, WhatTheBackgroundFetchesCanBeSkippedOrSwitchedOff) {
    userAllowedChecks();
    launch();
    updater->setAutomaticallyDownloadsUpdates(true);
    ASSERT_TRUE(checksByItself());
    work.fed({{itemOf("2")}});
    updater->setAutomaticallyDownloadsUpdates(false);
    EXPECT_EQ(std::exchange(work.cancellations, 0), 1);
    EXPECT_TRUE(canCheck());
    updater->setAutomaticallyDownloadsUpdates(true);
    now += 25h;
    launch();
    ASSERT_TRUE(checksByItself());
    updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(std::exchange(work.cancellations, 0), 1);
    updater->setAutomaticallyChecksForUpdates(true);
    now += 25h;
    launch();
    ASSERT_TRUE(checksByItself());
    work.fed({{itemOf("2")}});
    updater->checkForUpdates();
    EXPECT_EQ(dialogs.shown, "downloading") << "who looks on has not accepted it";
    work.prepared({});
    EXPECT_EQ(dialogs.shown, "ready, unheard of");
    dialogs.ready(ReadyAnswer::skip);
    EXPECT_EQ(dialogs.shown, "nothing");
    EXPECT_EQ(work.cancellations, 1);
    EXPECT_EQ(schedule.skippedVersion(), "2");
    updater->applicationWillTerminate();
    EXPECT_EQ(work.installs, 0);
}

TEST_F(SoftwareUpdaterTest, WithoutFeedOrKeySaysSoOnceAndDoesNothing) {
    userAllowedChecks();
    launch(nullptr);
    EXPECT_EQ(delegate.notConfigured, 1);
    EXPECT_FALSE(canCheck());
    EXPECT_FALSE(updater->value(UpdaterFlag::allowsAutomaticUpdates));
    updater->checkForUpdates();
    EXPECT_EQ(dialogs.shown, "error 1003");
    dialogs.acknowledge();
    EXPECT_TRUE(delegate.aborted.empty());
    updater->applicationWillTerminate();
}

TEST_F(SoftwareUpdaterTest, FlagsReachTheirObserversAsTheyAreThen) {
    launch();
    std::vector<bool> seen;
    auto observation = updater->observe(UpdaterFlag::automaticallyChecksForUpdates,
                                        [&](bool checks) { seen.push_back(checks); });
    mainQueue.runAll();
    updater->setAutomaticallyChecksForUpdates(true);
    updater->setAutomaticallyChecksForUpdates(true);
    mainQueue.runAll();
    updater->setAutomaticallyChecksForUpdates(false);
    updater->setAutomaticallyChecksForUpdates(true);
    mainQueue.runAll();
    EXPECT_EQ(seen, (std::vector<bool>{false, true, true, true})) << "no late false";
    updater->setAutomaticallyChecksForUpdates(false);
    observation.reset();
    mainQueue.runAll();
    EXPECT_EQ(seen.size(), 4u);
}

TEST(UpdateSchedule, ReadsTheIntervalAndTheLastCheckWhateverStandsThere) {
    const struct {
        const char* name;
        std::map<std::string, std::string, std::less<>> stored;
        std::optional<double> bundle;
        std::chrono::seconds interval;
        std::chrono::seconds untilNext;
    } cases[] = {
        {"nothing", {}, {}, 24h, 0s},
        {"an hour ago", {{"SULastCheckTime", "6400"}}, {}, 24h, 23h},
        {"of the bundle", {{"SULastCheckTime", "9900"}}, 7200.0, 2h, 2h - 100s},
        {"of the user", {{"SUScheduledCheckInterval", "3600"}, {"SULastCheckTime", "1"}}, 7200.0, 1h, 0s},
        {"too short", {{"SUScheduledCheckInterval", "0.5"}}, {}, 1min, 0s},
        {"no number", {{"SUScheduledCheckInterval", "often"}, {"SULastCheckTime", "x"}}, {}, 24h, 0s},
        {"negative", {{"SUScheduledCheckInterval", "-5"}}, -1.0, 24h, 0s},
        {"not finite", {{"SUScheduledCheckInterval", "nan"}, {"SULastCheckTime", "nan"}}, {}, 24h, 0s},
        {"later than now", {{"SULastCheckTime", "10001"}}, {}, 24h, 0s},
    };
    for (const auto& [name, stored, bundle, interval, untilNext] : cases) {
        FakePreferences preferences;
        preferences.entries = stored;
        const UpdateSchedule schedule(preferences, bundle, [] { return WallTime(10'000s); });
        EXPECT_EQ(schedule.interval(), interval) << name;
        EXPECT_EQ(schedule.untilNextCheck(), untilNext) << name;
    }
}

} // namespace
} // namespace glimmerly

#include "settings/updates/AppUpdater.h"

#include "settings/updates/UpdaterViewModel.h"
#include "tests/support/FakeApplication.h"
#include "tests/support/FakePreferences.h"
#include "tests/support/FakeUpdates.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

const std::string domain(updateErrorDomain);

class AppUpdaterTest : public testing::Test {
protected:
    AppUpdater& make(BundleInfo bundle = {}) {
        return updater.emplace(AppUpdaterServices{.bundle = std::move(bundle),
                                                  .application = application,
                                                  .preferences = preferences,
                                                  .updates = updates});
    }

    LogCapture log;
    FakeApplication application;
    FakePreferences preferences;
    FakeUpdates updates;
    std::optional<AppUpdater> updater;
};

TEST_F(AppUpdaterTest, KeepsThePreferencesToTheBundle) {
    using Entries = std::map<std::string, std::string, std::less<>>;
    const std::string feed = "https://a.example/feed";
    const Entries both{
        {"SUFeedURL", "https://b.example/"}, {"SUScheduledCheckInterval", "60"}, {"other", "1"}};
    const struct {
        const char* name;
        BundleInfo bundle;
        Entries before;
        Entries after;
    } cases[] = {
        {"another feed", {.feedURL = feed}, both, {{"other", "1"}}},
        {"the same feed", {.feedURL = feed}, {{"SUFeedURL", feed}}, {{"SUFeedURL", feed}}},
        {"no feed in the bundle", {.scheduledCheckInterval = 60}, both, both},
        {"neither in the bundle", {}, both, {{"SUFeedURL", "https://b.example/"}, {"other", "1"}}},
        {"an interval that is no number", {}, {{"SUScheduledCheckInterval", "often"}}, {}},
        {"nothing stored", {.feedURL = feed}, {}, {}},
    };
    for (const auto& [name, bundle, before, after] : cases) {
        preferences.entries = before;
        preferences.writes = 0;
        make(bundle);
        EXPECT_EQ(preferences.entries, after) << name;
        EXPECT_EQ(preferences.writes, static_cast<int>(before.size() - after.size())) << name;
    }
    EXPECT_EQ(updates.controllers, 6);
    make().checkForUpdates();
    EXPECT_EQ(application.activations, 1);
    EXPECT_EQ(updates.checks, 1);
}

TEST_F(AppUpdaterTest, LogsACheckThatFoundNothing) {
    const Error error(domain, 1001, "You’re up to date!");
    const std::pair<NoUpdateFound, std::string> cases[] = {
        {{.error = error}, domain + " 1001: You’re up to date!"},
        {{.error = error, .reason = NoUpdateReason::onLatestVersion, .initiator = CheckInitiator::user},
         domain + " 1001: You’re up to date! | Reason: onLatestVersion | user_initiated: true"},
        {{.error = error, .initiator = CheckInitiator::schedule},
         domain + " 1001: You’re up to date! | user_initiated: false"},
    };
    for (const auto& [outcome, details] : cases) {
        make().updaterDidNotFindUpdate(outcome);
        const auto line = log.withMessage("Sparkle did not surface a downloadable update").back();
        EXPECT_EQ(line.level, GlimmerlyLog::Level::info);
        EXPECT_EQ(line.category, "Updates");
        EXPECT_EQ(line.metadata->at("details"), details);
        EXPECT_FALSE(line.errorSummary);
    }
}

TEST_F(AppUpdaterTest, LogsFailuresAndNoOthers) {
    make().updaterDidAbort({domain, 1001, ""});
    make().updaterDidAbort({domain, 4007, ""});
    EXPECT_TRUE(log.records().empty());

    const std::string plain = "Description: What happened.\nDomain: " + domain + " code: 2001";
    const Error error(domain, 2001, "What happened.");
    const std::pair<Error, std::string> cases[] = {
        {error, plain},
        {Error(error).withFailureReason(""), plain},
        {Error(error).withFailureReason("Why."), plain + "\nFailure reason: Why."},
        {Error(error).withUnderlying({"POSIX", 28, "full"}), plain + "\nUnderlying: POSIX 28: full"},
        {Error("Other", 1001, "x"), "Description: x\nDomain: Other code: 1001"},
    };
    for (const auto& [failed, details] : cases) {
        make().updaterDidAbort(failed);
        const auto line = log.withMessage("An error occurred while installing the update").back();
        EXPECT_EQ(line.level, GlimmerlyLog::Level::error);
        EXPECT_EQ(line.category, "Updates");
        EXPECT_EQ(line.metadata->at("details"), details);
        EXPECT_EQ(line.metadata->at("errorCode"), std::to_string(failed.code()));
        EXPECT_EQ(line.errorSummary, failed.description());
    }
}

TEST_F(AppUpdaterTest, TheViewModelFollowsTheFlagsAndWritesTwoOfThem) {
    updates.updater.values = {{UpdaterFlag::automaticallyChecksForUpdates, true}};
    UpdaterViewModel model(*make().updaterController());
    EXPECT_FALSE(model.canCheckForUpdates());
    EXPECT_TRUE(model.automaticallyChecksForUpdates());
    EXPECT_FALSE(model.automaticallyDownloadsUpdates());
    EXPECT_FALSE(model.allowsAutomaticUpdates());

    int changes = 0;
    model.setOnChange([&] { ++changes; });
    const std::pair<UpdaterFlag, bool (UpdaterViewModel::*)() const> flags[] = {
        {UpdaterFlag::canCheckForUpdates, &UpdaterViewModel::canCheckForUpdates},
        {UpdaterFlag::automaticallyChecksForUpdates, &UpdaterViewModel::automaticallyChecksForUpdates},
        {UpdaterFlag::automaticallyDownloadsUpdates, &UpdaterViewModel::automaticallyDownloadsUpdates},
        {UpdaterFlag::allowsAutomaticUpdates, &UpdaterViewModel::allowsAutomaticUpdates},
    };
    for (const auto& [flag, mirrored] : flags) {
        for (int i = 0; i < 2; ++i) {
            changes = 0;
            const bool value = !updates.updater.value(flag);
            updates.updater.set(flag, value);
            EXPECT_EQ((model.*mirrored)(), value);
            EXPECT_EQ(changes, 1);
        }
    }
    for (const bool on : {false, true}) {
        model.setAutomaticallyChecksForUpdates(on);
        model.setAutomaticallyDownloadsUpdates(!on);
        EXPECT_EQ(updates.updater.value(UpdaterFlag::automaticallyChecksForUpdates), on);
        EXPECT_EQ(updates.updater.value(UpdaterFlag::automaticallyDownloadsUpdates), !on);
        EXPECT_EQ(model.automaticallyChecksForUpdates(), on);
        EXPECT_EQ(model.automaticallyDownloadsUpdates(), !on);
    }
}

} // namespace
} // namespace glimmerly

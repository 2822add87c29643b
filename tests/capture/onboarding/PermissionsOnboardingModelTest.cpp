#include "tests/capture/onboarding/OnboardingFixture.h"

namespace glimmerly {
namespace {

using testing::ElementsAre;

struct PermissionsOnboardingModelTest : OnboardingFixture {
    std::unique_ptr<PermissionsOnboardingModel> model =
        std::make_unique<PermissionsOnboardingModel>(services);
    int changes = 0;
};

TEST_F(PermissionsOnboardingModelTest, LooksForThePermissionUntilItIsGranted) {
    model->setOnChange([this] { ++changes; });
    model->startPolling();
    EXPECT_EQ(screenRecording.preflights, 1) << "at once";
    model->poll();
    EXPECT_EQ(screenRecording.preflights, 1) << "not within the timer's own call";
    mainQueue.runAll();
    EXPECT_EQ(screenRecording.preflights, 2);
    EXPECT_TRUE(model->isPolling());
    EXPECT_EQ(changes, 0);

    screenRecording.granted = true;
    model->poll();
    mainQueue.runAll();
    EXPECT_TRUE(model->isGranted());
    EXPECT_FALSE(model->isPolling());
    EXPECT_EQ(changes, 1);

    screenRecording.granted = false; // taken back before Continue
    model->continueTapped();
    EXPECT_FALSE(model->isGranted());
    EXPECT_TRUE(model->isPolling());
}

TEST_F(PermissionsOnboardingModelTest, APollThatOutlivesTheModelDoesNothing) {
    model->startPolling();
    model->poll();
    model.reset();
    mainQueue.runAll();
    EXPECT_EQ(screenRecording.preflights, 1);
}

TEST_F(PermissionsOnboardingModelTest, ContinueWithoutThePermissionExplainsOnceHoweverOften) {
    const std::string base = model->detailText();
    EXPECT_EQ(base, "After you enable access, return here and choose Continue. If permission still isn't "
                    "detected, choose Quit & Reopen below.");
    model->setOnContinueGranted([] { FAIL() << "the window would close"; });
    for (int press = 1; press <= 2; ++press) {
        model->continueTapped();
        EXPECT_EQ(model->detailText(),
                  base +
                      "\n\nScreen Recording is still off. Turn on Glimmerly in System Settings, then press "
                      "Continue. If it doesn't work, please press \"Quit & Reopen\" to refresh permissions.");
        EXPECT_EQ(application.activations, press);
        EXPECT_TRUE(model->isPolling());
    }
    EXPECT_EQ(screenRecording.preflights, 4) << "each press probes before and after";
    EXPECT_EQ(preferences.writes, 0);
    EXPECT_TRUE(telemetry.events.empty());
    model->startPolling();
    EXPECT_EQ(model->detailText(), base);
}

TEST_F(PermissionsOnboardingModelTest, ContinueWithThePermissionEndsTheOnboarding) {
    int closed = 0;
    model->setOnContinueGranted([&closed] { ++closed; });
    model->startPolling();
    screenRecording.granted = true;
    model->continueTapped();
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(model->isPolling());
    EXPECT_EQ(storedAnswer(), "true");
    EXPECT_THAT(events(), ElementsAre("permission_onboarding_dismissed"));
}

TEST_F(PermissionsOnboardingModelTest, TheSettingsButtonAsksForAccessAndLooksAgain) {
    model->startPolling();
    screenRecording.granted = true;
    model->openSystemSettings();
    EXPECT_THAT(events(), ElementsAre("permission_open_system_settings"));
    EXPECT_EQ(screenRecording.settingsOpened, 1);
    EXPECT_EQ(log.withMessage("Requesting screen capture access via ScreenCaptureKit").size(), 1u);
    EXPECT_TRUE(model->isGranted());
    EXPECT_FALSE(model->isPolling());
}

TEST_F(PermissionsOnboardingModelTest, ReopeningEndsThisProcessOnlyOnceTheNewOneHasStarted) {
    model->quitAndReopen();
    ASSERT_EQ(application.newInstances.size(), 1u);
    application.newInstances.front()(Error("start", 2, "no such program"));
    mainQueue.runAll();
    EXPECT_EQ(application.terminations, 0);
    application.newInstances.front()(std::nullopt);
    EXPECT_EQ(application.terminations, 0);
    model.reset();
    mainQueue.runAll();
    EXPECT_EQ(application.terminations, 1);
}

} // namespace
} // namespace glimmerly

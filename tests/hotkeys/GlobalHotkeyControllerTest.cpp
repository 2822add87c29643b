#include "hotkeys/GlobalHotkeyController.h"

#include "hotkeys/HotkeySettings.h"
#include "tests/support/FakeHotkeyService.h"
#include "tests/support/FakeMainQueue.h"
#include "tests/support/FakePreferences.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Registration = FakeHotkeyService::Registration;
using Suspension = GlobalHotkeyController::Suspension;

constexpr std::uint32_t shiftCommand = 0x300;
constexpr std::uint32_t controlCommand = 0x1100;
constexpr KeyCombination controlCommandSpace{KeyCode{49}, Modifiers::control | Modifiers::command};
constexpr HotkeyIdentifier ours{('G' << 24) | ('L' << 16) | ('M' << 8) | 'R', 1};

class GlobalHotkeyControllerTest : public testing::Test {
protected:
    void start() {
        controller->start([this] { ++requests; });
        mainQueue.runAll(); // the refresh for the first value
    }
    /// The one line about a failure, as "message status".
    std::vector<std::string> failures() const {
        std::vector<std::string> found;
        for (const LogRecord& line : log.records()) {
            if (line.level == GlimmerlyLog::Level::error && line.category == "Hotkey")
                found.push_back(line.message + " " + line.metadata->at("osstatus"));
        }
        return found;
    }

    FakePreferences preferences;
    NotificationCenter notifications;
    FakeHotkeyService service;
    FakeMainQueue mainQueue;
    HotkeySettings settings{preferences, notifications};
    std::unique_ptr<GlobalHotkeyController> controller =
        std::make_unique<GlobalHotkeyController>(service, settings, mainQueue);
    LogCapture log;
    int requests = 0;
};

TEST_F(GlobalHotkeyControllerTest, APressAsksForAScreenshotOnTheMainQueue) {
    start();
    EXPECT_THAT(service.registrations(), ElementsAre(Registration{0, shiftCommand, ours}));
    service.press(0, shiftCommand);
    EXPECT_EQ(requests, 0);
    mainQueue.runAll();
    EXPECT_EQ(requests, 1);
    const auto lines = log.withMessage("Registered global screenshot hotkey pressed");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].level, GlimmerlyLog::Level::debug);
    EXPECT_EQ(lines[0].category, "Hotkey");
}

TEST_F(GlobalHotkeyControllerTest, FollowsTheSettingsWithOneRegistrationAtATime) {
    start();
    settings.setKeyCombination(KeyCombination{KeyCode{1}, Modifiers::command});
    settings.setKeyCombination(controlCommandSpace);
    EXPECT_THAT(service.registrations(), ElementsAre(Registration{0, shiftCommand, ours}))
        << "changes are queued";
    mainQueue.runAll();
    EXPECT_THAT(service.registrations(), ElementsAre(Registration{49, controlCommand, ours}));
    controller->refresh();
    controller->refresh();
    mainQueue.runAll();
    EXPECT_EQ(service.registrations().size(), 1U);
    EXPECT_THAT(failures(), IsEmpty());
}

TEST_F(GlobalHotkeyControllerTest, StandsAsideWhileRecording) {
    start();
    controller->setSuspendedForRecording(Suspension::on);
    mainQueue.runAll();
    EXPECT_THAT(service.registrations(), IsEmpty());
    settings.setKeyCombination(controlCommandSpace);
    mainQueue.runAll();
    service.press(0, shiftCommand);
    service.press(49, controlCommand);
    mainQueue.runAll();
    EXPECT_EQ(requests, 0);
    EXPECT_THAT(log.records(), IsEmpty());

    controller->setSuspendedForRecording(Suspension::off);
    mainQueue.runAll();
    service.press(0, shiftCommand);
    service.press(49, controlCommand);
    mainQueue.runAll();
    EXPECT_EQ(requests, 1);
}

TEST_F(GlobalHotkeyControllerTest, LeavesEventsThatAreNotItsOwnToOthers) {
    start();
    const HotkeyIdentifier otherSignature{ours.signature + 1, 1};
    const HotkeyIdentifier otherNumber{ours.signature, 2};
    FakeHotkeyEvent unreadable(ours);
    unreadable.readable = std::unexpected(-9870);

    EXPECT_EQ(service.deliver(FakeHotkeyEvent(otherSignature)), -9874);
    EXPECT_EQ(service.deliver(FakeHotkeyEvent(otherNumber)), -9874);
    EXPECT_EQ(service.deliver(FakeHotkeyEvent(ours, hotkeyReleasedEventKind)), -9874);
    EXPECT_EQ(service.deliver(nullptr), -9874);
    EXPECT_EQ(service.deliver(unreadable), -9870);
    EXPECT_EQ(mainQueue.pending(), 0U);
    EXPECT_EQ(service.deliver(FakeHotkeyEvent(ours)), 0);
    EXPECT_EQ(mainQueue.pending(), 1U);
}

TEST_F(GlobalHotkeyControllerTest, WithoutAHandlerThereIsNoHotkeyForThisRun) {
    service.installStatus = -9860;
    start();
    EXPECT_THAT(failures(), ElementsAre("InstallEventHandler failed -9860"));
    settings.setKeyCombination(controlCommandSpace);
    mainQueue.runAll();
    EXPECT_EQ(service.registrationCalls, 0);
    EXPECT_EQ(failures().size(), 1U);
}

TEST_F(GlobalHotkeyControllerTest, LogsARefusalAndRegistersTheNextChange) {
    service.nextRegistrationAnswer = {hotkey_status::hotkeyExists, 0};
    start();
    EXPECT_THAT(failures(), ElementsAre("RegisterEventHotKey failed -9878"));
    service.nextRegistrationAnswer = {hotkey_status::success, 0};
    controller->refresh();
    mainQueue.runAll();
    EXPECT_EQ(failures().back(), "RegisterEventHotKey failed -50") << "success without a handle is none";
    settings.setKeyCombination(controlCommandSpace);
    mainQueue.runAll();
    EXPECT_EQ(failures().size(), 2U);
    EXPECT_THAT(service.registrations(), ElementsAre(Registration{49, controlCommand, ours}));
    const int calls = service.registrationCalls;
    settings.setKeyCombination({});
    mainQueue.runAll();
    EXPECT_EQ(failures().size(), 3U) << "a cleared combination is refused without a call";
    EXPECT_EQ(failures().back(), "RegisterEventHotKey failed -50");
    EXPECT_EQ(service.registrationCalls, calls);
    EXPECT_THAT(service.registrations(), IsEmpty());
    service.lose(hotkey_status::hotkeyExists);
    EXPECT_EQ(failures().back(), "RegisterEventHotKey failed -9878") << "also long after it was registered";
}

TEST_F(GlobalHotkeyControllerTest, ForgetsAHotkeyThatCannotBeReleased) {
    start();
    service.unregisterStatus = -9999;
    controller->unregister();
    controller->unregister();
    EXPECT_THAT(failures(), ElementsAre("UnregisterEventHotKey failed -9999"));
}

TEST_F(GlobalHotkeyControllerTest, ShutdownReleasesEverythingAndStartBringsItBack) {
    start();
    start();
    EXPECT_EQ(service.installations, 1);
    controller->shutdown();
    controller->refresh();
    mainQueue.runAll();
    EXPECT_EQ(service.handlerCount(), 0U);
    EXPECT_THAT(service.registrations(), IsEmpty());
    start();
    EXPECT_EQ(service.registrations().size(), 1U);
    EXPECT_THAT(failures(), IsEmpty());
}

TEST_F(GlobalHotkeyControllerTest, QueuedWorkOutlivesTheController) {
    start();
    service.press(0, shiftCommand);
    controller->refresh();
    controller.reset();
    settings.setKeyCombination(controlCommandSpace);
    mainQueue.runAll();
    EXPECT_EQ(requests, 0);
    EXPECT_THAT(service.registrations(), IsEmpty());
}

} // namespace
} // namespace glimmerly

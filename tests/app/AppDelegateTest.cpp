#include "app/AppDelegate.h"

#include "platform/Platform.h"
#include "settings/SettingsWindowController.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeHotkeyService.h"
#include "tests/support/FakeUpdates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;

/// What happened, in order: log lines and calls of the desktop.
std::vector<std::string> events;

struct RecordingLog : LogCapture {
    void write(LogRecord record) override { events.push_back(record.category + ": " + record.message); }
    void flush() override {
        events.emplace_back(http.requests().empty() ? "log flushed" : "log flushed after telemetry");
    }
    std::optional<std::filesystem::path> eventsURL() override { return location; }

    explicit RecordingLog(const FakeHttpClient& client) : http(client) {}

    const FakeHttpClient& http;
    std::optional<std::filesystem::path> location = "/somewhere/events.jsonl";
};

struct RecordingApplication : FakeApplication {
    void setActivationPolicy(ActivationPolicy policy) override {
        events.emplace_back(policy == ActivationPolicy::accessory ? "accessory" : "other policy");
    }
};

struct RecordingStatusItem : FakeStatusItem {
    void show() override { events.emplace_back("status item shown"); }
};

struct RecordingHotkeyService : FakeHotkeyService {
    Answer<HandlerRef> installHandler(Handler handler) override {
        events.emplace_back("hotkey handler installed");
        return FakeHotkeyService::installHandler(std::move(handler));
    }
    HotkeyStatus removeHandler(HandlerRef ref) override {
        events.emplace_back("hotkey handler removed");
        return FakeHotkeyService::removeHandler(ref);
    }
    HotkeyStatus unregisterHotkey(HotkeyRef ref) override {
        events.emplace_back("hotkey unregistered");
        return FakeHotkeyService::unregisterHotkey(ref);
    }
};

struct RecordingUpdates : FakeUpdates {
    std::unique_ptr<UpdaterController> startController(UpdaterDelegate& delegate) override {
        events.emplace_back("updater started");
        return FakeUpdates::startController(delegate);
    }
    void applicationDidFinishLaunching() override { events.emplace_back("updater knows of the launch"); }
    void applicationWillTerminate() override { events.emplace_back("updater ended"); }
};

/// The platform of the one process: the shared services keep it.
struct FakePlatform : FakeDesktop {
    RecordingApplication recordingApplication;
    RecordingHotkeyService hotkeys;
    RecordingStatusItem recordingStatusItem;
    RecordingUpdates updates;
    Platform platform{.bundle = {.name = "Glimmerly", .serviceBaseURL = "https://service.example"},
                      .notifications = notifications,
                      .application = recordingApplication,
                      .mainQueue = mainQueue,
                      .preferences = preferences,
                      .screens = screens,
                      .screenCapture = screenCapture,
                      .screenRecording = screenRecording,
                      .workspace = workspace,
                      .overlayWindows = overlayWindows,
                      .pasteboard = pasteboard,
                      .savePanel = savePanel,
                      .alerts = alerts,
                      .links = links,
                      .appearance = appearance,
                      .images = images,
                      .hotkeys = hotkeys,
                      .keyboardLayout = keyboardLayout,
                      .localEvents = localEvents,
                      .symbolicHotKeys = symbolicHotKeys,
                      .statusItem = recordingStatusItem,
                      .http = http,
                      .updates = updates};
};

TEST(AppDelegateTest, StartsAndStopsTheServicesInOrder) {
    auto& fake = *new FakePlatform;
    Platform::setCurrent(fake.platform);
    RecordingLog log(fake.http);
    AppDelegate delegate;

    delegate.applicationWillFinishLaunching();
    EXPECT_THAT(std::exchange(events, {}),
                ElementsAre("AppLifecycle: applicationWillFinishLaunching", "accessory"));

    delegate.applicationDidFinishLaunching();
    const std::string permission = "ScreenRecordingPermission: ";
    EXPECT_THAT(std::exchange(events, {}),
                ElementsAre("AppLifecycle: applicationDidFinishLaunching",
                            "Logging: Structured log file path", "updater started", "status item shown",
                            "hotkey handler installed",
                            permission + "Checking menu bar status windows for title access",
                            permission + "No suitable non-owned menu bar windows; using CGPreflight fallback",
                            "updater knows of the launch"));

    // With no display at all, both ways to a screenshot end in the alert, and nowhere else.
    fake.hotkeys.press(0, 0x300);
    fake.mainQueue.runAll();
    fake.recordingStatusItem.menu->actions().at(2)->trigger();
    fake.recordingStatusItem.menuHasGone();
    fake.mainQueue.runAll();
    EXPECT_EQ(fake.alerts.shown.size(), 2u);
    fake.recordingApplication.reopen();
    fake.mainQueue.runAll();
    EXPECT_TRUE(SettingsWindowController::shared().window().isVisible());
    events.clear();

    delegate.applicationWillTerminate();
    EXPECT_THAT(events, ElementsAre("AppLifecycle: applicationWillTerminate", "log flushed after telemetry",
                                    "hotkey unregistered", "hotkey handler removed", "updater ended",
                                    "log flushed after telemetry"));
    const std::string body = fake.http.requests().at(0).body;
    EXPECT_THAT(body, testing::HasSubstr("app_launch"));
    EXPECT_TRUE(fake.http.isStopped);
}

} // namespace
} // namespace glimmerly

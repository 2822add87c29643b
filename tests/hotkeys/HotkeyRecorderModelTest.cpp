#include "hotkeys/HotkeyRecorderModel.h"

#include "tests/support/LogCapture.h"
#include "tests/support/RecorderServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace glimmerly {
namespace {

using namespace event_modifier;
using testing::SizeIs;

constexpr KeyCombination space{KeyCode{49}, Modifiers::control | Modifiers::option | Modifiers::command};

class HotkeyRecorderModelTest : public testing::Test {
protected:
    LogCapture log;
    RecorderServices desktop;
    std::optional<HotkeyRecorderModel> model{desktop.services};
};

TEST_F(HotkeyRecorderModelTest, OnlyAKeyWithControlOptionOrCommandWillDo) {
    struct Case {
        const char* name;
        KeyDownEvent key;
    };
    constexpr std::uint64_t capsLock = 1U << 16;
    model->startRecording();
    int beeps = 0;
    for (const auto& [name, key] :
         {Case{"A", {0, 0}}, Case{"Shift-A", {0, shift}}, Case{"Caps Lock", {0, capsLock}},
          Case{"Shift-Escape", {53, shift}}, Case{"no key code", {{}, control}}}) {
        EXPECT_FALSE(desktop.events.press(key)) << name;
        EXPECT_TRUE(model->isRecording()) << name;
        EXPECT_EQ(desktop.alerts.beeps, ++beeps) << name;
    }
    EXPECT_FALSE(desktop.events.press({53, capsLock}));
    EXPECT_FALSE(model->isRecording()) << "Escape ends it";
    EXPECT_EQ(desktop.alerts.beeps, beeps);
    EXPECT_EQ(desktop.settings.keyCombination(), HotkeySettings::defaultCombination);
    EXPECT_THAT(desktop.registered(), SizeIs(1));
}

TEST_F(HotkeyRecorderModelTest, RefusesWhatTheDesktopReservesAsLongAsItDoes) {
    constexpr auto flags = hotkey_modifier::control | hotkey_modifier::option | hotkey_modifier::command;
    constexpr std::uint32_t otherFlag = 0x400;
    auto& entries = desktop.symbolicHotKeys.entries;
    entries = {{true, 49, hotkey_modifier::control}, {true, 50, flags}, {true, 49, flags | otherFlag}};
    model->startRecording();
    EXPECT_FALSE(desktop.events.press(recorder_key::controlOptionCommandSpace));
    EXPECT_TRUE(model->isRecording());
    EXPECT_TRUE(model->isPresentingSystemReservedError());
    EXPECT_EQ(desktop.settings.keyCombination(), HotkeySettings::defaultCombination);
    const auto lines = log.withMessage("Rejected system-reserved shortcut");
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].level, GlimmerlyLog::Level::warning);
    EXPECT_EQ(lines[0].category, "HotkeyRecorder");
    EXPECT_EQ(lines[0].metadata->at("key"), "49");
    EXPECT_EQ(lines[0].metadata->at("modifiers_enc"), "11");

    model->dismissSystemReservedError();
    EXPECT_FALSE(model->isPresentingSystemReservedError());
    entries.back().isEnabled = false;
    EXPECT_FALSE(desktop.events.press(recorder_key::controlOptionCommandSpace));
    EXPECT_EQ(desktop.settings.keyCombination(), space);
    EXPECT_FALSE(model->isRecording());
}

TEST_F(HotkeyRecorderModelTest, AnnouncesEachChangeBeforeItIsMade) {
    std::vector<bool> recordingBefore;
    model->setOnWillChange([&] { recordingBefore.push_back(model->isRecording()); });
    model->startRecording();
    model->stopRecording();
    desktop.settings.setKeyCombination(std::nullopt);
    EXPECT_THAT(recordingBefore, testing::ElementsAre(false, true, false));
}

TEST_F(HotkeyRecorderModelTest, ARecorderThatGoesResumesTheHotkey) {
    int announcements = 0;
    model->setOnWillChange([&] { ++announcements; });
    model->startRecording();
    desktop.queue.runAll();
    model.reset();
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(desktop.events.monitorCount(), 0U);
    EXPECT_THAT(desktop.registered(), SizeIs(1));
    desktop.settings.setKeyCombination(space);
}

TEST(EventMonitorTest, AMonitorGoesWithItsStateAndIsInstalledOnce) {
    FakeLocalEvents events;
    {
        EventMonitor monitor(events, keyDownMask, [](const KeyDownEvent&) { return std::nullopt; });
        EventMonitor copy = monitor;
        monitor.start();
        copy.start();
        EXPECT_EQ(events.monitorCount(), 1U);
        copy.stop();
        monitor.stop();
        EXPECT_EQ(events.monitorCount(), 0U);
        monitor.start();
        EXPECT_FALSE(events.press({0, 0}));
    }
    EXPECT_EQ(events.monitorCount(), 0U);
}

} // namespace
} // namespace glimmerly

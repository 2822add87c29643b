#include "hotkeys/HotkeySettings.h"

#include "tests/support/FakePreferences.h"
#include "tests/support/LogCapture.h"

#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;

constexpr KeyCombination controlCommandSpace{KeyCode{49}, Modifiers::control | Modifiers::command};

class HotkeySettingsTest : public testing::Test {
protected:
    void store(const std::string& bytes) {
        preferences.entries[std::string(HotkeySettings::defaultsKey)] = bytes;
    }
    std::optional<std::string> stored() const { return preferences.data("screenshotGlobalHotkey"); }

    FakePreferences preferences;
    NotificationCenter notifications;
    LogCapture log;
};

TEST_F(HotkeySettingsTest, StartWithTheDefaultAndStoreIt) {
    int announced = 0;
    const auto observation = notifications.observe("GlimmerlyGlobalHotkeyDidChange", [&] { ++announced; });
    const HotkeySettings settings(preferences, notifications);
    EXPECT_EQ(settings.keyCombination(), KeyCombination(KeyCode{0}, Modifiers(12)));
    EXPECT_EQ(stored(), "[0,12]");
    EXPECT_EQ(announced, 1);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(HotkeySettingsTest, ReplaceACorruptValueAndLogItOnce) {
    for (const char* corrupt : {"[49]", "no JSON", "", "[\"a\",1]"}) {
        const LogCapture lines;
        store(corrupt);
        EXPECT_EQ(HotkeySettings(preferences, notifications).keyCombination(),
                  HotkeySettings::defaultCombination);
        EXPECT_EQ(stored(), "[0,12]");
        ASSERT_EQ(lines.records().size(), 1U) << corrupt;
        const LogRecord line = lines.records().front();
        EXPECT_EQ(line.level, GlimmerlyLog::Level::error);
        EXPECT_EQ(line.category, "HotkeySettings");
        EXPECT_EQ(line.message, "Corrupt hotkey shortcut in UserDefaults; restoring default ⌘⇧A");
        EXPECT_EQ(line.metadata->at("defaults_key"), "screenshotGlobalHotkey");
        EXPECT_EQ(line.metadata->at("errorDomain"), "Glimmerly.DecodingError");
        EXPECT_TRUE(line.errorSummary);
    }
}

TEST_F(HotkeySettingsTest, ClearForThisRunOnly) {
    HotkeySettings settings(preferences, notifications);
    settings.setKeyCombination({});
    EXPECT_EQ(settings.keyCombination(), std::nullopt);
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(HotkeySettings(preferences, notifications).keyCombination(),
              HotkeySettings::defaultCombination);
}

TEST_F(HotkeySettingsTest, EveryAssignmentRunsTheWholeSequenceInOrder) {
    HotkeySettings settings(preferences, notifications);
    std::vector<std::string> steps;
    const auto note = [&](const std::string& step) {
        const auto& current = settings.keyCombination();
        steps.push_back(step + " " + (current ? current->encoded() : "none") + " " +
                        stored().value_or("none"));
    };
    auto observation = settings.observeWillChange([&] { note("will"); });
    settings.setRegistrationRefresh([&] { note("refresh"); });
    EXPECT_THAT(steps, ElementsAre("refresh [0,12] [0,12]")) << "the first value's";
    steps.clear();
    const auto after = notifications.observe(HotkeySettings::didChangeNotification, [&] { note("did"); });

    settings.setKeyCombination(controlCommandSpace);
    EXPECT_THAT(steps, ElementsAre("will [0,12] [0,12]", "refresh [49,9] [49,9]", "did [49,9] [49,9]"));
    steps.clear();
    preferences.writes = 0;
    settings.setKeyCombination(controlCommandSpace);
    EXPECT_EQ(steps.size(), 3U) << "also for the same combination again";
    EXPECT_EQ(preferences.writes, 1);
    steps.clear();
    observation.reset();
    settings.setKeyCombination({});
    EXPECT_THAT(steps, ElementsAre("refresh none none", "did none none"));
}

} // namespace
} // namespace glimmerly

#include "hotkeys/HotkeySettings.h"
#include "platform/qt/QtPreferences.h"
#include "tests/support/FakePreferences.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

class QtPreferencesTest : public testing::Test {
protected:
    std::optional<std::string> reread(const char* key) const { return QtPreferences(file).data(key); }

    ScratchDirectory scratch;
    const std::filesystem::path file = scratch.path() / "config" / "app" / "preferences.ini";
};

/// What everyone who uses preferences relies on.
void expectContract(Preferences& preferences) {
    EXPECT_EQ(preferences.data("a"), std::nullopt);
    const std::string everyByte = [] {
        std::string bytes;
        for (int byte = 0; byte < 256; ++byte)
            bytes += static_cast<char>(byte);
        return bytes;
    }();
    for (const std::string& bytes : {std::string("[0,12]"), std::string(), everyByte}) {
        preferences.setData("a", bytes);
        EXPECT_EQ(preferences.data("a"), bytes);
    }
    preferences.setData("b", "two");
    preferences.remove("a");
    preferences.remove("a");
    EXPECT_EQ(preferences.data("a"), std::nullopt);
    EXPECT_EQ(preferences.data("b"), "two");
    preferences.setBool("b", true);
    EXPECT_EQ(preferences.data("b"), "true");
}

TEST_F(QtPreferencesTest, KeepTheContractAsTheFakeDoes) {
    QtPreferences preferences(file);
    expectContract(preferences);
    FakePreferences fake;
    expectContract(fake);
}

TEST_F(QtPreferencesTest, AreOnDiskAtOnceInTheFormThatOthersRead) {
    QtPreferences preferences(file);
    preferences.setData("screenshotGlobalHotkey", "[0,12]");
    EXPECT_EQ(reread("screenshotGlobalHotkey"), "[0,12]");
    EXPECT_EQ(contentOf(file), "[General]\nscreenshotGlobalHotkey=\"@ByteArray([0,12])\"\n");
    preferences.remove("screenshotGlobalHotkey");
    EXPECT_EQ(reread("screenshotGlobalHotkey"), std::nullopt);
}

TEST_F(QtPreferencesTest, AreTheirOwnersAloneWhateverTheUmask) {
    const auto expectPrivate = [&] {
        EXPECT_EQ(modeOf(file), 0600U);
        EXPECT_EQ(modeOf(file.parent_path()), 0700U);
    };
    for (const mode_t mask : {0U, 077U, 0777U}) {
        const ScopedUmask umask(mask);
        std::filesystem::remove_all(scratch.path() / "config");
        QtPreferences(file).setData("a", "1");
        expectPrivate();
    }
    std::filesystem::permissions(file, std::filesystem::perms(0666));
    std::filesystem::permissions(file.parent_path(), std::filesystem::perms(0777));
    QtPreferences preferences(file);
    EXPECT_EQ(preferences.data("a"), "1");
    expectPrivate();
    preferences.setData("a", "2");
    expectPrivate();
}

TEST_F(QtPreferencesTest, ReadWhatAPersonTypedIn) {
    std::filesystem::create_directories(file.parent_path());
    for (const char* typed : {"[49,9]", "\"[49,9]\"", "@ByteArray([49,9])"}) {
        writeContent(file, std::string("[General]\nscreenshotGlobalHotkey=") + typed + "\n");
        EXPECT_EQ(reread("screenshotGlobalHotkey"), "[49,9]") << typed;
    }
}

TEST_F(QtPreferencesTest, SurviveACorruptFile) {
    std::filesystem::create_directories(file.parent_path());
    const std::string garbage[] = {std::string("\0\xFF\xFE[[[=\n\n=;\"", 12),
                                   "[General\nscreenshotGlobalHotkey=", "screenshotGlobalHotkey=@ByteArray(",
                                   std::string(100'000, '\\'),
                                   "[General]\nscreenshotGlobalHotkey=@Variant(\\0\\0\\0\\xff)"};
    for (const std::string& bytes : garbage) {
        const LogCapture log;
        NotificationCenter notifications;
        writeContent(file, bytes);
        QtPreferences preferences(file);
        const HotkeySettings settings(preferences, notifications);
        EXPECT_EQ(settings.keyCombination(), HotkeySettings::defaultCombination);
        EXPECT_EQ(reread("screenshotGlobalHotkey"), "[0,12]") << bytes.substr(0, 60);
        EXPECT_EQ(modeOf(file), 0600U);
    }
}

TEST_F(QtPreferencesTest, WithoutAFileNothingIsKeptAndNothingFails) {
    QtPreferences nowhere{std::nullopt};
    nowhere.setData("a", "1");
    nowhere.remove("a");
    EXPECT_EQ(nowhere.data("a"), std::nullopt);
    writeContent(scratch.path() / "config", "a file where the directory should be");
    QtPreferences blocked(file);
    blocked.setData("a", "1");
    EXPECT_EQ(blocked.data("a"), "1");
}

} // namespace
} // namespace glimmerly

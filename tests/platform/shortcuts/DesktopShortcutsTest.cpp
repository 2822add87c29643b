#include "platform/shortcuts/DesktopShortcuts.h"

#include "platform/HotkeyService.h"
#include "tests/support/FakeKeyboardLayout.h"
#include "tests/support/ProcessState.h"
#include "tests/support/ScratchDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace glimmerly {
namespace {

using namespace hotkey_modifier;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

/// The configuration of a user on a desktop of the test's choice.
class DesktopShortcutsTest : public testing::Test {
protected:
    void write(const std::filesystem::path& name, std::string_view content) const {
        std::filesystem::create_directories((own / name).parent_path());
        writeContent(own / name, content);
    }
    [[nodiscard]] std::vector<SymbolicHotKey> on(const char* currentDesktop) const {
        const ScopedEnvironment desktop("XDG_CURRENT_DESKTOP", currentDesktop);
        return shortcuts.copySymbolicHotKeys();
    }

    ScratchDirectory scratch;
    std::filesystem::path own = scratch.path() / "own";
    ScopedEnvironment configuration{"XDG_CONFIG_HOME", own.c_str()};
    ScopedEnvironment systems{"XDG_CONFIG_DIRS", (scratch.path() / "system").c_str()};
    FakeKeyboardLayout layout{{{0, "a"}, {1, "s"}, {37, "l"}}};
    RunningWindowManager manager;
    DesktopShortcuts shortcuts{layout, [this] { return manager; }};
};

TEST_F(DesktopShortcutsTest, ReadsWhatBelongsToTheDesktopAndItsWindowManagerAfresh) {
    EXPECT_THAT(on("KDE"), IsEmpty());
    write("kglobalshortcutsrc", "[ksmserver]\nLock=Meta+L,Meta+L,Lock\nOff=none,Meta+S,Off\n");
    write("openbox/rc.xml", "<a><keybind key='W-a'/></a>");
    const SymbolicHotKey lock{true, 37, command};
    const SymbolicHotKey openbox{true, 0, command};
    EXPECT_THAT(on("KDE"), ElementsAre(lock, SymbolicHotKey{false, 1, command}));
    EXPECT_THAT(on(nullptr), IsEmpty());
    EXPECT_THAT(on("Unheard-of"), IsEmpty());
    manager.name = "Openbox";
    EXPECT_THAT(on("LXDE"), ElementsAre(openbox));
    EXPECT_THAT(on("Nonsense:KDE"), ElementsAre(lock, SymbolicHotKey{false, 1, command}, openbox));

    writeContent(scratch.path() / "other.xml", "<a><keybind key='C-s'/></a>");
    manager.configurationFile = scratch.path() / "other.xml";
    EXPECT_THAT(on(nullptr), ElementsAre(SymbolicHotKey{true, 1, control}));
    manager.configurationFile = scratch.path();
    EXPECT_THAT(on(nullptr), IsEmpty());
    manager.configurationFile.clear();
    write("openbox/rc.xml", "<a><keybind key='W-a'/>" + std::string(1 << 20, ' ') + "</a>");
    EXPECT_THAT(on(nullptr), IsEmpty()) << "a file beyond all measure";

    const std::filesystem::path name = "xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml";
    std::filesystem::create_directories((scratch.path() / "system" / name).parent_path());
    writeContent(scratch.path() / "system" / name,
                 "<c><property name='commands'><property name='default'>"
                 "<property name='&lt;Super&gt;l' value='lock'/></property></property></c>");
    EXPECT_THAT(on("XFCE"), ElementsAre(lock));
}

TEST_F(DesktopShortcutsTest, ReadsGSettings) {
    // GIO looks at these once a process.
    const std::string schemas = scratch.path() / "schemas";
    ::setenv("GSETTINGS_SCHEMA_DIR", schemas.c_str(), 1);
    ::setenv("GSETTINGS_BACKEND", "keyfile", 1);
    std::filesystem::create_directories(schemas);
    writeContent(schemas + "/test.gschema.xml", R"(<schemalist>
        <schema id="org.gnome.desktop.wm.keybindings" path="/org/gnome/desktop/wm/keybindings/">
          <key name="close" type="as"><default>['&lt;Alt&gt;F4', '&lt;Alt&gt;s']</default></key>
          <key name="minimize" type="as"><default>['&lt;Super&gt;s']</default></key></schema>
        <schema id="org.gnome.settings-daemon.plugins.media-keys" path="/test/media-keys/">
          <key name="screensaver" type="s"><default>'&lt;Super&gt;l'</default></key>
          <key name="number" type="i"><default>3</default></key>
          <key name="custom-keybindings" type="as"><default>['no path', '/test/a/', '/test//']</default></key></schema>
        <schema id="org.gnome.settings-daemon.plugins.media-keys.custom-keybinding">
          <key name="binding" type="s"><default>''</default></key></schema></schemalist>)");
    ASSERT_EQ(std::system(("glib-compile-schemas " + schemas).c_str()), 0);
    write("glib-2.0/settings/keyfile",
          "[org/gnome/desktop/wm/keybindings]\nminimize=@as []\n[test/a]\nbinding='<Control><Super>a'\n");
    const auto found = on("ubuntu:GNOME");
    for (const SymbolicHotKey& expected :
         {SymbolicHotKey{true, 118, option}, SymbolicHotKey{true, 1, option},
          SymbolicHotKey{true, 37, command}, SymbolicHotKey{true, 0, control | command}})
        EXPECT_THAT(found, Contains(expected));
    EXPECT_THAT(found, Not(Contains(SymbolicHotKey{true, 1, command}))) << "switched off by the user";
    EXPECT_THAT(on("MATE"), IsEmpty()) << "not installed";
}

} // namespace
} // namespace glimmerly

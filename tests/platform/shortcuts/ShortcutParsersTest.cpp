#include "platform/HotkeyService.h"
#include "platform/KeyboardLayout.h"
#include "platform/VirtualKeyCodes.h"
#include "platform/shortcuts/KdeShortcuts.h"
#include "platform/shortcuts/OpenboxShortcuts.h"
#include "platform/shortcuts/XfceShortcuts.h"
#include "platform/x11/X11KeyboardSymbols.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace glimmerly {
namespace {

using namespace hotkey_modifier;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

DesktopShortcut key(xkb_keysym_t symbol, std::uint32_t flags) {
    return {{.symbol = symbol, .carbonFlags = flags}};
}
DesktopShortcut disabled(DesktopShortcut shortcut) {
    shortcut.isEnabled = false;
    return shortcut;
}

TEST(ShortcutParsersTest, Gtk) {
    struct Case {
        const char* text;
        std::optional<KeyStroke> keys;
    };
    const auto named = [](xkb_keysym_t symbol, std::uint32_t flags) {
        return KeyStroke{.symbol = symbol, .carbonFlags = flags};
    };
    for (const auto& [text, keys] : {
             Case{"<Super>l", named(XKB_KEY_l, command)},
             Case{"<super><SHIFT>L", named(XKB_KEY_l, command | shift)},
             Case{"<Primary><Alt>Delete", named(XKB_KEY_Delete, control | option)},
             Case{"<Mod4><Mod1><Ctrl>minus", named(XKB_KEY_minus, command | option | control)},
             Case{"Print", named(XKB_KEY_Print, 0)},
             Case{"<Alt>Above_Tab", KeyStroke{.keycode = 49, .carbonFlags = option}},
             Case{"<Super>0x2b", KeyStroke{.keycode = 43, .carbonFlags = command}},
             Case{"", {}},
             Case{"<Super>", {}},
             Case{"<Super", {}},
             Case{"<Hyper>l", {}},
             Case{"<Super>nonsense", {}},
             Case{"<Super>0x1ff", {}},
             Case{"<Super>0x", {}},
             Case{"<Super>0x0", {}},
             Case{"disabled", {}},
         })
        EXPECT_EQ(parseGtkAccelerator(text), keys) << text;
}

TEST(ShortcutParsersTest, Openbox) {
    EXPECT_THAT(
        openboxShortcuts(R"(<?xml version="1.0"?>
        <openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard>
          <chainQuitKey>C-g</chainQuitKey>
          <keybind key="W-A-Tab"><action name="Execute"><command>&lt;true&gt;</command></action></keybind>
          <!-- <keybind key="W-x"/> -->
          <keybind key="C-x  C-c"><keybind key="W-a"/></keybind>
          <keybind key="Mod4-minus"/><keybind key="S-0x30"/>
          <keybind key="Control-alt-t"/><keybind key="w-SUPER-l"/>
          <keybind key="H-a"/><keybind key="W-"/><keybind key=""/><keybind/>
          <keybind key="A-F4"/></keyboard></openbox_config>)"),
        ElementsAre(key(XKB_KEY_Tab, command | option), key(XKB_KEY_x, control), key(XKB_KEY_minus, command),
                    DesktopShortcut{{.keycode = 48, .carbonFlags = shift}}, key(XKB_KEY_t, control | option),
                    key(XKB_KEY_l, command), key(XKB_KEY_F4, option)));
    EXPECT_THAT(openboxShortcuts("<a><keybind key='W-a'/><broken"), ElementsAre(key(XKB_KEY_a, command)));
    EXPECT_THAT(openboxShortcuts("<!DOCTYPE a [<!ENTITY k 'W-a'>]><a><keybind key='&k;'/></a>"), IsEmpty());
    EXPECT_THAT(openboxShortcuts(""), IsEmpty());
}

TEST(ShortcutParsersTest, Kde) {
    struct Case {
        const char* text;
        std::vector<DesktopShortcut> shortcuts;
    };
    for (const auto& [text, shortcuts] : std::initializer_list<Case>{
             {"Lock=Meta+L\\tScreensaver,Meta+L,Lock Session", {key(XKB_KEY_l, command)}},
             {"Close=Ctrl+Alt+Esc\r", {key(XKB_KEY_Escape, control | option)}},
             {"In=Meta++\\tMeta+=\\tCtrl+Num++,none,Zoom In",
              {key(XKB_KEY_plus, command), key(XKB_KEY_equal, command), key(XKB_KEY_KP_Add, control)}},
             {"Comma=Meta+\\\\,,none,Title", {key(XKB_KEY_comma, command)}},
             {R"(Backslash=Meta+\\\\,none,Title)", {key(XKB_KEY_backslash, command)}},
             {"Down=Meta+Shift+PgDown,,", {key(XKB_KEY_Next, command | shift)}},
             {"Accent=Meta+É,,", {key(XKB_KEY_eacute, command)}},
             {"Shifted=Alt+~\\tMeta+!,,", {key(XKB_KEY_asciitilde, option), key(XKB_KEY_exclam, command)}},
             {"Digit=Meta+Num+7,,", {key(XKB_KEY_KP_7, command)}},
             {"Off=none,Meta+E,Dolphin", {disabled(key(XKB_KEY_e, command))}},
             {"Never=none,none,Dolphin", {}},
             {"_k_friendly_name=Meta+A", {}},
             {"[Group][Meta+A=Meta+A]", {}},
             {"#Comment=Meta+A", {}},
             {"No value", {}},
             {R"(Bad=Hyper+A\tMeta+\tMeta+Nonsense\tMeta\\)", {}},
         }) {
        auto expected = shortcuts;
        for (DesktopShortcut& shortcut : expected)
            shortcut.keys.shift = ShiftOfSymbol::implied;
        EXPECT_EQ(kdeShortcuts(std::string("[kwin]\n") + text + "\n"), expected) << text;
    }
}

std::string xfceChannel(const std::string& content) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><channel name="xfce4-keyboard-shortcuts" version="1.0">)" +
           content + "</channel>";
}

TEST(ShortcutParsersTest, Xfce) {
    const std::string system = xfceChannel(R"(<property name="commands" type="empty">
        <property name="default" type="empty">
          <property name="&lt;Alt&gt;F2" type="string" value="run"><property name="startup" value="true"/></property>
          <property name="&lt;Alt&gt;F1" type="empty"/>
        </property></property>
        <property name="xfwm4"><property name="default">
          <property name="&lt;Alt&gt;F4" type="string" value="close_window_key"/></property></property>
        <property name="providers" type="array"><value type="string" value="xfwm4"/></property>)");
    EXPECT_THAT(xfceShortcuts(std::vector{system}),
                UnorderedElementsAre(key(XKB_KEY_F2, option), disabled(key(XKB_KEY_F1, option)),
                                     key(XKB_KEY_F4, option)));
    const std::string user = xfceChannel(R"(<property name="commands"><property name="custom">
          <property name="&lt;Super&gt;r" type="string" value="run"/>
          <property name="override" type="bool" value="true"/></property></property>
        <property name="xfwm4"><property name="default">
          <property name="&lt;Alt&gt;F4" type="empty"/></property></property>)");
    EXPECT_THAT(xfceShortcuts(std::vector{system, user}),
                UnorderedElementsAre(disabled(key(XKB_KEY_F2, option)), disabled(key(XKB_KEY_F1, option)),
                                     key(XKB_KEY_r, command), disabled(key(XKB_KEY_F4, option))));
    EXPECT_THAT(xfceShortcuts({}), IsEmpty());
}

/// A layout as the system describes it.
class DescribedLayout : public KeyboardLayout {
public:
    explicit DescribedLayout(const char* name) : symbols_(compileKeymap(*context_, name), 0) {}

    [[nodiscard]] std::optional<std::string> translate(std::int64_t keyCode) const override {
        return text(keyCode, KeyLevel::plain);
    }
    [[nodiscard]] std::optional<std::string> translateShifted(std::int64_t keyCode) const override {
        return text(keyCode, KeyLevel::shifted);
    }
    [[nodiscard]] Observation observe(std::function<void()> /*observer*/) override { return {}; }

private:
    [[nodiscard]] std::optional<std::string> text(std::int64_t keyCode, KeyLevel level) const {
        const auto positions = evdevCodesFromVirtualKeyCode(keyCode);
        return positions.empty() ? std::nullopt : symbols_.text(positions.front() + firstXKeycode, level);
    }

    XkbContext context_ = makeXkbContext();
    X11KeyboardSymbols symbols_;
};

TEST(ShortcutParsersTest, KeysAreFoundByWhatTheyPrintAloneOrWithShift) {
    const auto gtk = [](const char* text) {
        return DesktopShortcut{parseGtkAccelerator(text).value(), false};
    };
    const auto kde = [](const std::string& text) { return kdeShortcuts("a=none," + text).at(0); };
    struct Case {
        const char* layout;
        DesktopShortcut shortcut;
        std::vector<std::int64_t> codes;
        std::uint32_t carbonFlags = 0;
    };
    for (const auto& [layout, shortcut, codes, carbonFlags] : std::initializer_list<Case>{
             {"us", gtk("A"), {0}},
             {"us", gtk("<Shift>exclam"), {18}, shift},
             {"us", gtk("<Super>exclam"), {18}, command},
             {"us", gtk("<Shift>1"), {18}, shift},
             {"us", gtk("KP_Subtract"), {78}},
             {"us", gtk("KP_End"), {83}},
             {"us", gtk("space"), {49}},
             {"us", gtk("Print"), {105}},
             {"us", gtk("Above_Tab"), {50}},
             {"us", gtk("0x26"), {0}},
             {"us", gtk("0x08"), {}},
             {"us", gtk("eacute"), {}},
             {"us", gtk("XF86Calculator"), {}},
             {"us", gtk("Super_L"), {}},
             {"us", kde("Alt+~"), {50}, option | shift},
             {"us", kde("Meta+!"), {18}, command | shift},
             {"us", kde("Alt+Backtab"), {48}, option | shift},
             {"us", kde("Meta+A"), {0}, command},
             {"de", kde("Meta+?"), {27}, command | shift},
             {"de", kde("Meta+Ä"), {39}, command},
             {"de", kde("Alt+~"), {}}, // takes more than Shift
             {"fr", gtk("A"), {12}},
             {"fr", gtk("<Super>exclam"), {44}, command},
             {"fr", gtk("ampersand"), {18}},
             {"fr", gtk("1"), {18}},
             {"fr", gtk("minus"), {22}},
             {"fr", kde("Meta+."), {43}, command | shift},
         }) {
        std::vector<SymbolicHotKey> expected;
        for (const std::int64_t code : codes)
            expected.push_back({false, code, carbonFlags});
        EXPECT_EQ(symbolicHotKeysOf(shortcut, DescribedLayout(layout)), expected)
            << layout << ", symbol " << shortcut.keys.symbol;
    }
}

} // namespace
} // namespace glimmerly

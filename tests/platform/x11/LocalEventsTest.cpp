#include "platform/HotkeyService.h"
#include "platform/qt/QtLocalEvents.h"
#include "platform/shortcuts/DesktopShortcuts.h"
#include "platform/x11/X11KeyboardLayout.h"
#include "platform/x11/X11WindowManager.h"
#include "tests/platform/input/TestKeyboard.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/platform/x11/XcbClient.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QShortcut>
#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr std::int64_t keyD = 2;
constexpr std::int64_t tab = 48;

/// Counts the presses that reach an object, repeats included.
class PressCounter : public QObject {
public:
    explicit PressCounter(QObject& object) { object.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::KeyPress;
        return false;
    }
    int count = 0;
};

/// A window of ours that types and has a shortcut, on a desktop whose window manager has shortcuts too.
class LocalEventsTest : public testing::Test {
protected:
    LocalEventsTest() : shortcut(QKeySequence("Ctrl+D"), &window) {
        auto* layout = new QVBoxLayout(&window);
        for (auto* edit : {&first, &second})
            layout->addWidget(edit);
        QObject::connect(&shortcut, &QShortcut::activated, &window, [this] { ++shortcuts; });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(runUntil([this] { return window.isActiveWindow() && first.hasFocus(); }));
    }

    void monitor() {
        token = events.addLocalMonitorForEvents(keyDownMask, [this](const KeyDownEvent& event) {
            seen.push_back(event);
            if (event.keyCode == virtual_key::escape)
                events.removeMonitor(token);
            return std::optional<KeyDownEvent>();
        });
    }
    void press(std::initializer_list<std::int64_t> modifiers, std::int64_t key) {
        for (const auto modifier : modifiers)
            keyboard.down(modifier);
        keyboard.tap(key);
        for (const auto modifier : modifiers)
            keyboard.up(modifier);
    }
    bool waitForPresses(std::size_t count) {
        return runUntil([&] { return seen.size() >= count; });
    }

    X11Desktop desktop{{.windowManager = WindowManager::openbox}};
    TestKeyboard keyboard;
    QtLocalEvents events;
    QWidget window;
    QLineEdit first{&window};
    QLineEdit second{&window};
    QShortcut shortcut;
    int shortcuts = 0;
    std::vector<KeyDownEvent> seen;
    LocalEvents::Monitor token = 0;
};

TEST_F(LocalEventsTest, AMonitorGetsEveryKeyAndNothingElseDoes) {
    using namespace event_modifier;
    PressCounter reached(first);
    monitor();
    press({}, virtual_key::ansiA);
    press({TestKeyboard::controlKey}, keyD);
    press({TestKeyboard::shiftKey}, tab);
    press({TestKeyboard::superKey, TestKeyboard::altKey}, virtual_key::ansiZ);
    press({TestKeyboard::superKey}, keyD); // the window manager's
    ASSERT_TRUE(waitForPresses(5));
    EXPECT_THAT(seen,
                ElementsAre(KeyDownEvent{virtual_key::ansiA, 0}, KeyDownEvent{keyD, control},
                            KeyDownEvent{tab, shift}, KeyDownEvent{virtual_key::ansiZ, command | option},
                            KeyDownEvent{keyD, command}));
    EXPECT_EQ(reached.count, 0) << "not even Shift";
    EXPECT_EQ(shortcuts, 0);
    EXPECT_TRUE(first.hasFocus());

    TestKeyboard::run("xset r rate 30 100");
    PressCounter presses(*QCoreApplication::instance());
    bool escapeReachedTheWindow = false;
    QShortcut escape(Qt::Key_Escape, &window, [&] { escapeReachedTheWindow = true; });
    keyboard.down(virtual_key::escape);
    EXPECT_TRUE(runUntil([&] { return presses.count >= 10; }));
    keyboard.up(virtual_key::escape);
    TestKeyboard::run("xset r rate");
    press({}, virtual_key::ansiA);
    EXPECT_TRUE(runUntil([&] { return first.text() == "a"; }));
    EXPECT_FALSE(escapeReachedTheWindow) << "it was still held";
    EXPECT_EQ(seen.size(), 6U);
    keyboard.tap(virtual_key::escape);
    EXPECT_TRUE(runUntil([&] { return escapeReachedTheWindow; }));
}

TEST_F(LocalEventsTest, WhatALayoutMakesOfAModifierOrOfEscapeCounts) {
    TestKeyboard::setLayout("-layout us,de -option '' -option grp:alt_shift_toggle,caps:escape");
    monitor();
    press({TestKeyboard::altKey, TestKeyboard::shiftKey}, virtual_key::ansiA);
    press({TestKeyboard::controlKey}, TestKeyboard::capsLock);
    press({}, TestKeyboard::capsLock);
    ASSERT_TRUE(waitForPresses(3));
    EXPECT_EQ(seen[0].keyCode, virtual_key::ansiA) << "no key to switch the layout";
    EXPECT_EQ(seen[1], (KeyDownEvent{TestKeyboard::capsLock, event_modifier::control}));
    EXPECT_EQ(seen[2], (KeyDownEvent{virtual_key::escape, 0}));
    TestKeyboard::setLayout("-layout us -option ''");
}

TEST_F(LocalEventsTest, KeysOfTheDesktopAreItsOwnAgainWhenAnotherProgramIsInFront) {
    const auto other = X11Connection::open().value();
    const auto isKeyboardFree = [&] {
        const auto request = xcb_grab_keyboard(other->get(), 0, other->root(), XCB_CURRENT_TIME,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const XcbOwned<xcb_grab_keyboard_reply_t> reply(
            xcb_grab_keyboard_reply(other->get(), request, nullptr));
        xcb_ungrab_keyboard(other->get(), XCB_CURRENT_TIME);
        other->sync();
        return reply->status == XCB_GRAB_STATUS_SUCCESS;
    };
    EXPECT_TRUE(isKeyboardFree());
    monitor();
    EXPECT_TRUE(runUntil([&] { return !isKeyboardFree(); }));
    QCoreApplication::processEvents();
    XcbClient program;
    const xcb_window_t theirs = program.open({});
    EXPECT_TRUE(runUntil([&] { return program.focus(theirs) == theirs && isKeyboardFree(); }));
    window.activateWindow();
    EXPECT_TRUE(runUntil([&] { return window.isActiveWindow() && !isKeyboardFree(); }));
    events.removeMonitor(token);
    EXPECT_TRUE(runUntil(isKeyboardFree));
}

TEST_F(LocalEventsTest, TheWindowManagersShortcutsAreKnown) {
    const X11WindowManager manager(X11Connection::open().value());
    const auto layout = X11KeyboardLayout::open().value();
    const DesktopShortcuts shortcutsHere(
        *layout, [&] { return RunningWindowManager{manager.name(), manager.openboxConfigurationFile()}; });
    const auto reserved = shortcutsHere.copySymbolicHotKeys();
    EXPECT_THAT(reserved, Contains(SymbolicHotKey{true, keyD, hotkey_modifier::command}));
    EXPECT_THAT(reserved, Contains(SymbolicHotKey{true, tab, hotkey_modifier::option}));
    EXPECT_THAT(reserved, Not(Contains(SymbolicHotKey{true, keyD, hotkey_modifier::option})));
}

} // namespace
} // namespace glimmerly

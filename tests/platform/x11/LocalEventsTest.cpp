#include "platform/qt/QtLocalEvents.h"
#include "tests/platform/input/TestKeyboard.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/support/desktop/XcbClient.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QShortcut>
#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;

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
    keyboard.tap({}, virtual_key::ansiA);
    keyboard.tap({TestKeyboard::controlKey}, keyD);
    keyboard.tap({TestKeyboard::shiftKey}, tab);
    keyboard.tap({TestKeyboard::superKey, TestKeyboard::altKey}, virtual_key::ansiZ);
    keyboard.tap({TestKeyboard::superKey}, keyD); // the window manager's
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
    keyboard.tap({}, virtual_key::ansiA);
    EXPECT_TRUE(runUntil([&] { return first.text() == "a"; }));
    EXPECT_FALSE(escapeReachedTheWindow) << "it was still held";
    EXPECT_EQ(seen.size(), 6U);
    keyboard.tap(virtual_key::escape);
    EXPECT_TRUE(runUntil([&] { return escapeReachedTheWindow; }));
}

TEST_F(LocalEventsTest, WhatALayoutMakesOfAModifierOrOfEscapeCounts) {
    TestKeyboard::setLayout("-layout us,de -option '' -option grp:alt_shift_toggle,caps:escape");
    monitor();
    keyboard.tap({TestKeyboard::altKey, TestKeyboard::shiftKey}, virtual_key::ansiA);
    keyboard.tap({TestKeyboard::controlKey}, TestKeyboard::capsLock);
    keyboard.tap({}, TestKeyboard::capsLock);
    ASSERT_TRUE(waitForPresses(3));
    EXPECT_EQ(seen[0].keyCode, virtual_key::ansiA) << "no key to switch the layout";
    EXPECT_EQ(seen[1], (KeyDownEvent{TestKeyboard::capsLock, event_modifier::control}));
    EXPECT_EQ(seen[2], (KeyDownEvent{virtual_key::escape, 0}));
    TestKeyboard::setLayout("-layout us -option ''");
}

TEST_F(LocalEventsTest, KeysOfTheDesktopAreItsOwnAgainWhenAnotherProgramIsInFront) {
    XcbClient program;
    const auto isKeyboardFree = [&] { return program.robot.isKeyboardFree(); };
    EXPECT_TRUE(isKeyboardFree());
    monitor();
    EXPECT_TRUE(runUntil([&] { return !isKeyboardFree(); }));
    QCoreApplication::processEvents();
    const xcb_window_t theirs = program.open({});
    EXPECT_TRUE(runUntil([&] { return program.focus(theirs) == theirs && isKeyboardFree(); }));
    window.activateWindow();
    EXPECT_TRUE(runUntil([&] { return window.isActiveWindow() && !isKeyboardFree(); }));
    events.removeMonitor(token);
    EXPECT_TRUE(runUntil(isKeyboardFree));
}

} // namespace
} // namespace glimmerly

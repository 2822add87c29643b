#include "platform/x11/X11HotkeyService.h"

#include "TestKeyboard.h"
#include "tests/support/ProcessState.h"
#include "tests/support/desktop/XServer.h"
#include "tests/support/desktop/XcbClient.h"

#include <QAbstractEventDispatcher>
#include <QKeyEvent>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

constexpr std::uint32_t shiftCommand = hotkey_modifier::shift | hotkey_modifier::command;
constexpr HotkeyIdentifier ours{0x474C4D52, 1};
constexpr int bound = 10'000; // milliseconds

/// Another program, which wants keys too.
class OtherProgram : public XcbClient {
public:
    /// True when it now holds the key with exactly these modifiers.
    bool grabKey(std::int64_t key, int modifiers) {
        const auto request =
            xcb_grab_key_checked(get(), 0, root(), static_cast<std::uint16_t>(modifiers),
                                 TestKeyboard::keycode(key), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        return !Reply<xcb_generic_error_t>(xcb_request_check(get(), request));
    }
    void ungrabKey(std::int64_t key) {
        xcb_ungrab_key(get(), TestKeyboard::keycode(key), root(), XCB_MOD_MASK_ANY);
        sync();
    }
    /// How often a key grab has taken the keyboard from a window of this program's.
    int grabsSeen() {
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(get())}) {
            if ((event->response_type & 0x7F) == XCB_FOCUS_OUT &&
                reinterpret_cast<xcb_focus_out_event_t*>(event.get())->mode == XCB_NOTIFY_MODE_GRAB)
                ++grabsSeen_;
        }
        return grabsSeen_;
    }

private:
    int grabsSeen_ = 0;
};

class X11HotkeyServiceTest : public testing::Test {
protected:
    X11HotkeyServiceTest() {
        std::ignore = service->installHandler([this](const HotkeyEvent*) {
            ++presses;
            if (onPress)
                onPress();
            return hotkey_status::success;
        });
    }

    HotkeyService::Answer<HotkeyService::HotkeyRef> registerA() {
        return service->registerHotkey(virtual_key::ansiA, shiftCommand, ours);
    }
    void holdHotkey(std::int64_t commandKey = TestKeyboard::superKey) {
        for (const auto key : {commandKey, TestKeyboard::shiftKey, virtual_key::ansiA})
            keyboard.down(key);
    }
    void releaseHotkey(std::int64_t commandKey = TestKeyboard::superKey) {
        for (const auto key : {virtual_key::ansiA, TestKeyboard::shiftKey, commandKey})
            keyboard.up(key);
    }
    void pressHotkey(std::int64_t commandKey = TestKeyboard::superKey) {
        holdHotkey(commandKey);
        releaseHotkey(commandKey);
    }
    bool waitForPresses(int count) {
        return QTest::qWaitFor([&] { return presses >= count; }, bound);
    }
    /// Presses until one is heard: the service may still have to learn how the keyboard has changed.
    bool eventuallyWorks(std::int64_t commandKey) {
        presses = 0;
        const auto works = [&] {
            pressHotkey(commandKey);
            return presses > 0;
        };
        return QTest::qWaitFor(works, bound);
    }

    TestKeyboard keyboard;
    std::unique_ptr<X11HotkeyService> service = X11HotkeyService::open().value();
    std::function<void()> onPress;
    int presses = 0;
};

TEST_F(X11HotkeyServiceTest, LockKeysAndGroupsDoNotMatter) {
    TestKeyboard::setLayout("-layout us,ru");
    ASSERT_EQ(registerA().status, hotkey_status::success);
    // Caps Lock, Num Lock and the bit shared by Mode_switch and AltGr, in each combination.
    constexpr unsigned locks = XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_5;
    for (unsigned locked = 0; locked <= locks; ++locked) {
        if ((locked & ~locks) != 0)
            continue;
        for (const unsigned group : {0U, 1U}) {
            keyboard.lock(static_cast<std::uint8_t>(locked), static_cast<std::uint8_t>(group));
            presses = 0;
            pressHotkey();
            EXPECT_TRUE(waitForPresses(1)) << "locked " << locked << " group " << group;
        }
    }
    keyboard.lock(0, 0);
}

TEST_F(X11HotkeyServiceTest, FollowsTheKeyboardAsItIsMappedAnew) {
    ASSERT_EQ(registerA().status, hotkey_status::success);
    for (const char* layout : {"-layout fr", "-layout ru", "-layout us -variant dvorak"}) {
        TestKeyboard::setLayout(layout);
        EXPECT_TRUE(eventuallyWorks(TestKeyboard::superKey)) << "the key stays where it is on " << layout;
    }
    TestKeyboard::setLayout("-layout us -option altwin:swap_alt_win");
    EXPECT_TRUE(eventuallyWorks(TestKeyboard::altKey)) << "Super on another key";
    TestKeyboard::run(
        "xmodmap -e 'clear mod4' -e 'clear mod1' -e 'add mod1 = Super_L' -e 'add mod4 = Alt_L'");
    EXPECT_TRUE(eventuallyWorks(TestKeyboard::altKey)) << "Super on another modifier bit";
    TestKeyboard::run("xmodmap -e 'add mod3 = Scroll_Lock'");
    keyboard.lock(XCB_MOD_MASK_3, 0);
    EXPECT_TRUE(eventuallyWorks(TestKeyboard::altKey)) << "Scroll Lock where there was none";
}

TEST_F(X11HotkeyServiceTest, APressJustBeforeItIsRegisteredAgainCounts) {
    const auto first = registerA();
    holdHotkey();
    EXPECT_EQ(service->unregisterHotkey(first.ref), hotkey_status::success);
    ASSERT_EQ(registerA().status, hotkey_status::success);
    EXPECT_EQ(presses, 1);
    releaseHotkey();
    pressHotkey();
    EXPECT_TRUE(waitForPresses(2));
}

TEST_F(X11HotkeyServiceTest, SaysSoWhenAChangeOfTheKeyboardMakesTheHotkeyAnothers) {
    HotkeyStatus loss = hotkey_status::success;
    service->onLoss([&](HotkeyStatus status) { loss = status; });
    OtherProgram other;
    ASSERT_TRUE(other.grabKey(virtual_key::ansiA, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_1));
    ASSERT_EQ(registerA().status, hotkey_status::success);
    TestKeyboard::run(
        "xmodmap -e 'clear mod4' -e 'clear mod1' -e 'add mod1 = Super_L' -e 'add mod4 = Alt_L'");
    EXPECT_TRUE(QTest::qWaitFor([&] { return loss == hotkey_status::hotkeyExists; }, bound));
    other.ungrabKey(virtual_key::ansiA);
}

TEST_F(X11HotkeyServiceTest, AnotherProgramsGrabOfAnyVariantIsReported) {
    constexpr int shiftSuper = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;
    OtherProgram other;
    OtherProgram third;
    for (const int lock : {0, int{XCB_MOD_MASK_LOCK}, XCB_MOD_MASK_2 | XCB_MOD_MASK_LOCK}) {
        ASSERT_TRUE(other.grabKey(virtual_key::ansiA, shiftSuper | lock));
        const auto answer = registerA();
        EXPECT_EQ(answer.status, hotkey_status::hotkeyExists);
        EXPECT_EQ(answer.ref, 0U);
        // No variant is left held.
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return third.grabKey(virtual_key::ansiA, shiftSuper | (lock ^ XCB_MOD_MASK_2)); }, bound));
        third.ungrabKey(virtual_key::ansiA);
        other.ungrabKey(virtual_key::ansiA);
    }
    ASSERT_EQ(registerA().status, hotkey_status::success);
    EXPECT_FALSE(other.grabKey(virtual_key::ansiA, shiftSuper));
    pressHotkey();
    EXPECT_TRUE(waitForPresses(1));
}

TEST_F(X11HotkeyServiceTest, TheOverlayCanTakeTheKeyboardWhileTheKeyIsDown) {
    const XcbClient overlay;
    bool isKeyboardFree = false;
    bool isStillDown = false;
    onPress = [&] {
        isKeyboardFree = overlay.robot.isKeyboardFree();
        isStillDown = keyboard.isDown(virtual_key::ansiA);
    };
    ASSERT_EQ(registerA().status, hotkey_status::success);
    holdHotkey();
    EXPECT_TRUE(waitForPresses(1));
    EXPECT_TRUE(isKeyboardFree);
    EXPECT_TRUE(isStillDown);
    releaseHotkey();
}

TEST_F(X11HotkeyServiceTest, AHeldKeyIsOnePress) {
    TestKeyboard::run("xset r rate 30 100");
    OtherProgram other;
    other.focus(other.open({.overrideRedirect = true}));
    ASSERT_EQ(registerA().status, hotkey_status::success);
    for (int round = 1; round <= 3; ++round) {
        const int grabsBefore = other.grabsSeen();
        holdHotkey();
        EXPECT_TRUE(QTest::qWaitFor([&] { return other.grabsSeen() - grabsBefore >= 10; }, bound))
            << "the key repeats";
        releaseHotkey();
        EXPECT_EQ(presses, round);
    }
    // However busy the program was meanwhile.
    holdHotkey();
    QTest::qSleep(200);
    releaseHotkey();
    pressHotkey();
    EXPECT_TRUE(waitForPresses(5));
    EXPECT_EQ(presses, 5);
    TestKeyboard::run("xset r rate");
}

TEST_F(X11HotkeyServiceTest, AKeyThatIsDownWhenItBecomesAHotkeyWasNotPressedAsOne) {
    TestKeyboard::run("xset r rate 30 100");
    OtherProgram other;
    other.focus(other.open({.overrideRedirect = true}));
    holdHotkey();
    ASSERT_EQ(registerA().status, hotkey_status::success);
    EXPECT_TRUE(QTest::qWaitFor([&] { return other.grabsSeen() >= 10; }, bound)) << "the key repeats";
    releaseHotkey();
    EXPECT_EQ(presses, 0);
    pressHotkey();
    EXPECT_TRUE(waitForPresses(1));
    EXPECT_EQ(presses, 1);
    TestKeyboard::run("xset r rate");
}

/// Counts the presses of a key that reach Qt from the server, repeats included.
class QtPressCounter : public QAbstractNativeEventFilter {
public:
    explicit QtPressCounter(std::int64_t key) : keycode_(TestKeyboard::keycode(key)) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        const auto* event = static_cast<const xcb_key_press_event_t*>(message);
        if (event->response_type == XCB_KEY_PRESS && event->detail == keycode_)
            ++count;
        return false;
    }
    int count = 0;

private:
    xcb_keycode_t keycode_;
};

class KeyboardWindow : public QWindow {
public:
    std::vector<int> keys;

protected:
    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
};

TEST_F(X11HotkeyServiceTest, WorksWhileAWindowOfOurOwnHoldsTheKeyboard) {
    TestKeyboard::run("xset r rate 30 100");
    KeyboardWindow window;
    window.setFlags(Qt::BypassWindowManagerHint);
    window.setGeometry(0, 0, 100, 100);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    ASSERT_TRUE(window.setKeyboardGrabEnabled(true));
    ASSERT_EQ(registerA().status, hotkey_status::success);
    QtPressCounter counter(virtual_key::ansiA);
    for (int round = 1; round <= 3; ++round) {
        counter.count = 0;
        holdHotkey();
        EXPECT_TRUE(QTest::qWaitFor([&] { return counter.count >= 10; }, bound)) << "the key repeats";
        releaseHotkey();
        keyboard.tap(virtual_key::escape);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return std::ranges::count(window.keys, int{Qt::Key_Escape}) == round; }, bound));
        EXPECT_EQ(presses, round);
    }
    EXPECT_EQ(std::ranges::count(window.keys, int{Qt::Key_A}), 0);
    keyboard.tap(virtual_key::ansiA);
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::ranges::count(window.keys, int{Qt::Key_A}) == 1; }, bound))
        << "typing goes to the window";
    window.setKeyboardGrabEnabled(false);
    // No hand presses a key again within a millisecond of the server's clock.
    EXPECT_TRUE(
        QTest::qWaitFor([&, released = keyboard.time()] { return keyboard.time() > released; }, bound));
    pressHotkey();
    EXPECT_TRUE(waitForPresses(4)) << "and without the keyboard it is a grab again";
    TestKeyboard::run("xset r rate");
}

TEST_F(X11HotkeyServiceTest, SurvivesTheServer) {
    XvfbServer doomed("640x480x24");
    const ScopedEnvironment display("DISPLAY", doomed.display().c_str());
    const auto orphan = X11HotkeyService::open().value();
    const auto ref = orphan->registerHotkey(virtual_key::ansiA, shiftCommand, ours).ref;
    doomed.kill();
    int turns = 0;
    const auto counting = QObject::connect(QAbstractEventDispatcher::instance(),
                                           &QAbstractEventDispatcher::aboutToBlock, [&] { ++turns; });
    QTest::qWait(200);
    QObject::disconnect(counting);
    EXPECT_LT(turns, 100) << "a lost connection must not keep the main loop busy";
    EXPECT_EQ(orphan->registerHotkey(0, 0, ours).status, hotkey_status::serviceUnavailable);
    EXPECT_EQ(orphan->unregisterHotkey(ref), hotkey_status::success);
    const ScopedEnvironment nowhere("DISPLAY", ":65000"); // a new server may have taken the lost one's number
    EXPECT_FALSE(X11HotkeyService::open());
}

} // namespace
} // namespace glimmerly

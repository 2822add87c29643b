#include "platform/x11/X11OverlayWindows.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/support/desktop/XcbClient.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWidget>
#include <gmock/gmock.h>

#include <cmath>

namespace glimmerly {
namespace {

/// Paints each pixel of the window in a colour of its own, and keeps what it is sent.
class OverlayContent : public QWidget {
public:
    static std::uint32_t colour(int x, int y) {
        return 0xff000000U | static_cast<std::uint32_t>((x * 7 + y * 131) % 0xffff) << 8 |
               static_cast<std::uint32_t>(x & 0xff);
    }

    OverlayContent() {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_NoSystemBackground);
        setMouseTracking(true);
        setFocusPolicy(Qt::StrongFocus);
    }

    std::vector<int> keys;
    QPointF mouse{-1, -1};
    int presses = 0;

protected:
    void paintEvent(QPaintEvent*) override {
        const double scale = devicePixelRatio();
        QImage image(size() * scale + QSize(2, 2), QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, colour(x, y));
        }
        image.setDevicePixelRatio(scale);
        QPainter(this).drawImage(0, 0, image);
    }
    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
    void mouseMoveEvent(QMouseEvent* event) override { mouse = event->scenePosition(); }
    void mousePressEvent(QMouseEvent*) override { ++presses; }
};

class Overlay {
public:
    Overlay() : windows(X11Connection::open().value()) { windows.prepare(content, screen(), frame()); }

    static Screen screen() {
        const QScreen* qt = QGuiApplication::primaryScreen();
        const double scale = qt->devicePixelRatio();
        const PixelRect native{0, 0, 640, 481};
        return {
            qt->name().toStdString(), 1, {0, 0, native.width / scale, native.height / scale}, scale, native};
    }
    static Rect frame() {
        Rect frame = screen().frame;
        frame.height += 2;
        return frame;
    }

    void open() {
        windows.makeKeyAndOrderFront(content);
        content.setFocus();
    }

    /// At a point of the display, in pixels at scale 1.
    [[nodiscard]] static bool isSeenAt(const XcbClient& client, int x, int y) {
        return client.pixel(x, y) == OverlayContent::colour(x, y + 1);
    }

    X11OverlayWindows windows;
    OverlayContent content;
};

class AtScale : public testing::TestWithParam<const char*> {};

TEST_P(AtScale, EachPixelIsWhereItBelongs) {
    X11Desktop desktop({.scale = GetParam()});
    XcbClient client;
    Overlay overlay;
    overlay.open();
    const int above = static_cast<int>(std::ceil(2 * Overlay::screen().backingScale)) / 2;

    const auto isPainted = [&] {
        const Bitmap shown = client.pixels({0, 0, 640, 481});
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if (shown.row(y)[static_cast<std::size_t>(x)] != OverlayContent::colour(x, y + above))
                    return false;
            }
        }
        return true;
    };
    EXPECT_TRUE(runUntil(isPainted));

    for (const PixelRect at : {PixelRect{0, 0, 1, 1}, PixelRect{333, 101, 1, 1}, PixelRect{639, 480, 1, 1}}) {
        client.robot.moveTo({at.x, at.y});
        const QPointF expected = QPointF(at.x, at.y + above) / Overlay::screen().backingScale;
        EXPECT_TRUE(runUntil([&] { return (overlay.content.mouse - expected).manhattanLength() < 1e-6; }, 3))
            << at.x << "," << at.y << " arrives at " << overlay.content.mouse.x() << ","
            << overlay.content.mouse.y();
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, AtScale, testing::Values("1", "1.25", "1.5", "1.75", "2", "1.1"));

class WithAndWithout : public testing::TestWithParam<WindowManager> {
protected:
    /// The overlay's native window.
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(overlay.content.winId()); }
    [[nodiscard]] bool hasManager() const { return GetParam() != WindowManager::none; }

    /// Another client's window that has the keyboard, after all that a window manager does with a new one.
    xcb_window_t openWithKeyboard() {
        const auto window = client.open({});
        EXPECT_TRUE(runUntil([&] {
            return client.focus(window) == window &&
                   (!hasManager() || client.managedWindows("_NET_ACTIVE_WINDOW") == std::vector{window});
        }));
        return window;
    }
    void typeAndExpectInOverlay() {
        client.robot.type({Key::a});
        EXPECT_TRUE(runUntil([&] { return overlay.content.keys == std::vector<int>{Qt::Key_A}; }));
        overlay.content.keys.clear();
        EXPECT_EQ(client.takeKeyPresses(), 0);
    }
    static void runAHundredTurns() {
        for (int turn = 0; turn < 100; ++turn)
            QCoreApplication::processEvents();
    }
    [[nodiscard]] bool isOnTop() { return Overlay::isSeenAt(client, 150, 80); }

    X11Desktop desktop{{.windowManager = GetParam(), .screen = "840x481x24"}};
    XcbClient client;
    Overlay overlay;
};

TEST_P(WithAndWithout, HasTheKeyboardAtOnceAndGivesItBackToTheVeryWindow) {
    const auto other = openWithKeyboard();
    overlay.open();
    EXPECT_EQ(client.focusedWindow(), window());
    typeAndExpectInOverlay();
    overlay.windows.orderOut(overlay.content);
    EXPECT_EQ(client.focusedWindow(), other);
    client.robot.type({Key::a});
    EXPECT_TRUE(runUntil([&] { return client.takeKeyPresses() == 1; }));
}

TEST_P(WithAndWithout, WhenNoWindowHadTheKeyboardNoneHasItAfterwards) {
    client.focus(XCB_INPUT_FOCUS_POINTER_ROOT);
    overlay.open();
    typeAndExpectInOverlay();
    overlay.windows.orderOut(overlay.content);
    EXPECT_NE(client.focusedWindow(), window());
    if (!hasManager()) {
        EXPECT_EQ(client.focusedWindow(), XCB_INPUT_FOCUS_POINTER_ROOT);
    }
}

TEST_P(WithAndWithout, LiesAbovePanelsAndWindowsRaisedLater) {
    client.open({.area = {100, 50, 200, 100}, .type = "DOCK"});
    overlay.open();
    EXPECT_TRUE(runUntil([&] { return isOnTop(); }));
    client.open({.area = {100, 50, 200, 100}});
    EXPECT_TRUE(runUntil([&] { return isOnTop(); }));
}

TEST_P(WithAndWithout, LetsPopupsThatComeLaterLieAboveIt) {
    overlay.open();
    EXPECT_TRUE(runUntil([&] { return isOnTop(); }));
    const auto candidates = client.open({.area = {100, 50, 200, 100}, .overrideRedirect = true});
    runAHundredTurns();
    EXPECT_FALSE(isOnTop());
    client.raise(candidates);
    runAHundredTurns();
    EXPECT_FALSE(isOnTop());
}

TEST_P(WithAndWithout, KeepsTheKeyboardWhileThePointerIsOnIt) {
    const auto other = openWithKeyboard();
    client.robot.moveTo({300, 300});
    overlay.open();
    client.focus(other);
    EXPECT_TRUE(runUntil([&] { return client.focusedWindow() == window(); }));
    typeAndExpectInOverlay();
}

TEST_P(WithAndWithout, SharesTheKeyboardWithWindowsOnOtherDisplays) {
    QWidget ours; // opened later, it lies above the overlay without covering any of it
    client.robot.moveTo({300, 300});
    overlay.open();
    ours.setGeometry(700, 50, 100, 100);
    ours.show();
    const auto own = static_cast<xcb_window_t>(ours.winId());
    ASSERT_TRUE(runUntil([&] { return client.focus(own) == own || client.focusedWindow() == window(); }));
    EXPECT_TRUE(runUntil([&] { return client.focusedWindow() == window(); }))
        << "the pointer is on the overlay";

    const auto other = openWithKeyboard();
    client.robot.moveTo({750, 300});
    EXPECT_TRUE(runUntil([&] {
        return client.focus(other) == other && (runAHundredTurns(), client.focusedWindow() == other);
    }));
    EXPECT_FALSE(overlay.windows.orderOut(overlay.content));
    EXPECT_EQ(client.focusedWindow(), other);
}

TEST_P(WithAndWithout, GivesWayToOneThatWillNotLoseTheKeyboard) {
    client.robot.moveTo({300, 300});
    overlay.open();
    const auto stubborn = client.open({.overrideRedirect = true});
    int taken = 0;
    EXPECT_TRUE(runUntil([&] {
        if (client.focusedWindow() != stubborn) {
            client.focus(stubborn);
            ++taken;
        }
        return taken > 10;
    }));
    runAHundredTurns();
    EXPECT_EQ(client.focusedWindow(), stubborn);
}

TEST_P(WithAndWithout, SwallowsTheRestOfAKeyHeldWhileItCloses) {
    const auto other = openWithKeyboard();
    overlay.open();
    client.robot.press(Key::escape);
    ASSERT_TRUE(runUntil([&] { return !overlay.content.keys.empty(); }));
    overlay.windows.orderOut(overlay.content);
    EXPECT_EQ(client.focusedWindow(), other);

    // What the other window would get of a held key it gets of any other pressed meanwhile.
    client.robot.type({Key::a});
    EXPECT_EQ(client.takeKeyPresses(), 0);
    client.robot.release(Key::escape);
    EXPECT_TRUE(runUntil([&] {
        client.robot.type({Key::a});
        return client.takeKeyPresses() > 0;
    }));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, WithAndWithout,
                         testing::Values(WindowManager::none, WindowManager::openbox), nameOfWindowManager);

TEST(OverlayWindowsOnX11, SurvivesTheWindowManagersRestart) {
    X11Desktop desktop({.windowManager = WindowManager::openbox});
    XcbClient client;
    client.robot.moveTo({300, 300});
    Overlay overlay;
    overlay.open();
    const auto window = static_cast<xcb_window_t>(overlay.content.winId());
    desktop.windowManager.reset();
    desktop.startWindowManager();
    const auto other = client.open({.area = {100, 50, 200, 100}});
    client.raise(other);
    EXPECT_TRUE(
        runUntil([&] { return client.focusedWindow() == window && overlay.isSeenAt(client, 150, 80); }));
}

} // namespace
} // namespace glimmerly

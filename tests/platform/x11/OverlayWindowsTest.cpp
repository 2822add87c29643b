#include "platform/x11/X11OverlayWindows.h"
#include "tests/platform/x11/X11Desktop.h"
#include "tests/platform/x11/XcbClient.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWidget>
#include <gmock/gmock.h>

#include <cmath>

namespace glimmerly {
namespace {

constexpr int escapeKeycode = 9;
constexpr int aKeycode = 38;

/// Paints each pixel of the window in a colour of its own, and keeps what it is sent.
class OverlayContent : public QWidget {
public:
    static std::uint32_t colour(int x, int y) {
        return static_cast<std::uint32_t>((x * 7 + y * 131) % 0xffff) << 8 |
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

    X11OverlayWindows windows;
    OverlayContent content;
};

class AtScale : public testing::TestWithParam<const char*> {};

TEST_P(AtScale, EachPixelIsWhereItBelongs) {
    X11Desktop desktop({.scale = GetParam()});
    XcbClient client;
    Overlay overlay;
    overlay.open();
    const int above = static_cast<int>(std::ceil(2 * overlay.screen().backingScale)) / 2;

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
    EXPECT_TRUE(waitUntil(isPainted));

    for (const PixelRect at : {PixelRect{0, 0, 1, 1}, PixelRect{333, 101, 1, 1}, PixelRect{639, 480, 1, 1}}) {
        client.movePointer(at.x, at.y);
        const QPointF expected = QPointF(at.x, at.y + above) / overlay.screen().backingScale;
        EXPECT_TRUE(waitUntil([&] { return (overlay.content.mouse - expected).manhattanLength() < 1e-6; }, 3))
            << at.x << "," << at.y << " arrives at " << overlay.content.mouse.x() << ","
            << overlay.content.mouse.y();
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, AtScale, testing::Values("1", "1.25", "1.5", "1.75", "2", "1.1"));

} // namespace
} // namespace glimmerly

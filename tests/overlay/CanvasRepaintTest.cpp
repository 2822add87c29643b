#include "tests/overlay/CanvasOnDisplay.h"

#include <QBackingStore>
#include <QScreen>
#include <gtest/gtest.h>

#include <random>

namespace glimmerly {
namespace {

/// What the window holds after the repaints that were asked for; nothing is drawn for the question's sake.
QImage held(OverlayCanvasView& view) {
    QCoreApplication::processEvents();
    QCoreApplication::processEvents(); // a toolbar that appears asks for its repaint on the way
    return static_cast<const QImage*>(view.backingStore()->paintDevice())->copy();
}

// Runs at whatever scale the application has; see the list of scales where the tests are registered.
TEST(CanvasRepaint, DrawsWhatChangedAsIfAllWereDrawnAfresh) {
    const double scale = QGuiApplication::primaryScreen()->devicePixelRatio();
    CanvasOnDisplay canvas({601, 407}, scale);
    canvas.view->show();
    held(*canvas.view); // the toolkit tells of the mouse that the new window lies under
    std::mt19937 random(3);
    const auto pixel = [&] {
        return PixelPoint{std::uniform_int_distribution(-20, 620)(random),
                          std::uniform_int_distribution(-20, 420)(random)};
    };
    const auto expectAllDrawn = [&](const char* step) {
        const QImage incremental = held(*canvas.view);
        canvas.view->update();
        const QImage fresh = held(*canvas.view);
        ASSERT_EQ(incremental.size(), fresh.size());
        if (incremental == fresh)
            return;
        QRegion stale;
        for (int y = 0; y < fresh.height(); ++y) {
            for (int x = 0; x < fresh.width(); ++x) {
                if (incremental.pixel(x, y) != fresh.pixel(x, y))
                    stale += QRect(x, y, 1, 1);
            }
        }
        const QRect area = stale.boundingRect();
        FAIL() << step << ": stale within " << area.x() << ", " << area.y() << ", " << area.width() << " x "
               << area.height();
    };
    for (int round = 0; round < 12; ++round) {
        canvas.move(pixel());
        expectAllDrawn("moved");
        PixelPoint at = pixel();
        canvas.press(at);
        expectAllDrawn("pressed");
        for (int step = 0; step < 4; ++step) {
            // Now far, now by a pixel or two.
            at = step % 2 == 0 ? pixel() : PixelPoint{at.x + 1, at.y - 2};
            canvas.drag(at);
            expectAllDrawn("dragged");
        }
        canvas.release(at);
        expectAllDrawn("released");
    }
}

TEST(CanvasRepaint, DraggingACornerRepaintsLittle) {
    CanvasOnDisplay canvas({1600, 1000});
    canvas.select({100, 100}, {900, 700});
    canvas.view->show();
    held(*canvas.view);
    class PaintedArea : public QObject {
    public:
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint) {
                for (const QRect& rect : static_cast<QPaintEvent*>(event)->region())
                    pixels += rect.width() * rect.height();
            }
            return false;
        }
        int pixels = 0;
    } painted;
    canvas.press({900, 700});
    canvas.drag({902, 702}); // hides the toolbar
    held(*canvas.view);
    canvas.view->installEventFilter(&painted);
    canvas.drag({904, 703});
    held(*canvas.view);
    EXPECT_GT(painted.pixels, 800 * 3 + 600 * 4);
    EXPECT_LT(painted.pixels, 1600 * 1000 / 50);
}

} // namespace
} // namespace glimmerly

#include "overlay/toolbar/OverlayToolbarView.h"
#include "tests/overlay/CanvasOnDisplay.h"

#include <QBackingStore>
#include <QPainter>
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
    /// A handle of what was drawn last.
    const auto lastDrawn = [&] {
        const auto& list = canvas.view->annotations().appliedList();
        if (list.empty())
            return pixel();
        const auto* arrow = std::get_if<ArrowShape>(&list.back().kind);
        const Point p = arrow ? arrow->start : std::get<RectangleShape>(list.back().kind).rect.origin();
        return PixelPoint{static_cast<int>(std::lround(p.x * scale)),
                          static_cast<int>(std::lround((canvas.view->bounds().height - p.y) * scale)) -
                              canvas.rowsAbove};
    };
    const auto expectAllDrawn = [&](const char* step) {
        QImage incremental = held(*canvas.view);
        canvas.view->update();
        QImage fresh = held(*canvas.view);
        if (!canvas.view->toolbar().isHidden()) { // its buttons light up and go out slowly
            for (QImage* image : {&incremental, &fresh})
                QPainter(image).fillRect(canvas.view->toolbar().geometry(), Qt::black);
        }
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
    for (int round = 0; round < 24; ++round) {
        if (round == 8) { // from here on drags draw, and change what was drawn
            canvas.select({40, 40}, {560, 380});
            canvas.view->toolbar().setSelectedColor("red");
        }
        if (round >= 8)
            canvas.view->toolbar().setSelectedTool(round % 2 ? SelectionTool::arrow
                                                             : SelectionTool::rectangle);
        canvas.move(pixel());
        expectAllDrawn("moved");
        PixelPoint at = round % 4 < 2 ? pixel() : lastDrawn();
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
    EXPECT_GT(canvas.view->annotations().undoStack().size(), 8u) << "drawn and changed";
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

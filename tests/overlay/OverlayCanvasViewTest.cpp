#include "tests/overlay/CanvasOnDisplay.h"
#include "tests/support/LogCapture.h"

#include <QEnterEvent>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

TEST(OverlayCanvasView, OnlyTheLeftButtonSelects) {
    CanvasOnDisplay canvas({400, 300});
    canvas.send(QEvent::MouseButtonPress, {100, 100}, Qt::RightButton, Qt::RightButton);
    canvas.send(QEvent::MouseMove, {200, 200}, Qt::NoButton, Qt::RightButton);
    canvas.send(QEvent::MouseButtonRelease, {200, 200}, Qt::RightButton, Qt::NoButton);
    EXPECT_FALSE(canvas.view->selectionRect());
    canvas.press({100, 100});
    canvas.drag({150, 150});
    canvas.send(QEvent::MouseButtonPress, {150, 150}, Qt::MiddleButton, Qt::LeftButton | Qt::MiddleButton);
    canvas.send(QEvent::MouseButtonRelease, {150, 150}, Qt::MiddleButton, Qt::LeftButton);
    canvas.drag({200, 200});
    canvas.release({200, 200});
    EXPECT_EQ(canvas.view->selectionRect(), Rect(100, 101, 100, 100));
}

TEST(OverlayCanvasView, DimsAllButTheSelectionWhichShowsTheCapture) {
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        SCOPED_TRACE(scale);
        CanvasOnDisplay canvas({301, 203}, scale);
        const QImage before = canvas.rendered();
        canvas.select({101, 103}, {201, 163});
        const QImage after = canvas.rendered();
        const auto expectDimmed = [&](int x, int y) {
            EXPECT_NEAR(qRed(after.pixel(x, y)), qRed(before.pixel(x, y)) * 0.7, 2) << x << ", " << y;
        };
        const int top = canvas.rowsAbove;
        for (int x = 103; x < 199; ++x) // between the handles and below the tag
            ASSERT_EQ(after.pixel(x, top + 120), before.pixel(x, top + 120)) << x;
        for (int x = 0; x < 99; ++x)
            expectDimmed(x, top + 120);
        for (int x = 203; x < 301; ++x)
            expectDimmed(x, top + 120);
        expectDimmed(0, 0);
        expectDimmed(300, top + 202);
        for (const int frameColumn : {100, 201})
            EXPECT_GE(qGreen(after.pixel(frameColumn, top + 120)), 242) << "right beside the selection";
    }
}

TEST(OverlayCanvasView, FrameIsSeenAtEveryEdgeOfTheDisplay) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        CanvasOnDisplay canvas({301, 203}, scale);
        canvas.select({0, 0}, {300, 202});
        const QImage shown = canvas.rendered();
        for (const QPoint pixel : {QPoint(0, 60), QPoint(300, 60), QPoint(60, 0), QPoint(60, 202)})
            EXPECT_GE(qGreen(shown.pixel(pixel + QPoint(0, canvas.rowsAbove))), 242) << scale;
    }
}

TEST(OverlayCanvasView, PositionTagFollowsTheMouseUntilThereIsASelection) {
    CanvasOnDisplay canvas({400, 300});
    const QImage bare = canvas.rendered();
    const QPointF inside(50, 150);
    QEnterEvent enter(inside, inside, inside);
    QApplication::sendEvent(canvas.view.get(), &enter);
    const QImage entered = canvas.rendered();
    EXPECT_NE(entered, bare);
    EXPECT_EQ(entered.copy(0, 0, 400, 100), bare.copy(0, 0, 400, 100));
    EXPECT_NE(entered.copy(60, 110, 80, 30), bare.copy(60, 110, 80, 30)) << "up and right of the pointer";
    canvas.move({390, 290});
    EXPECT_EQ(canvas.rendered().copy(392, 0, 8, 302), bare.copy(392, 0, 8, 302)) << "8 points from the edge";
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(canvas.view.get(), &leave);
    EXPECT_EQ(canvas.rendered(), bare);

    canvas.select({100, 100}, {200, 200});
    const QImage selected = canvas.rendered();
    canvas.move({300, 50});
    EXPECT_EQ(canvas.rendered(), selected);
}

TEST(OverlayCanvasView, CursorTellsWhatADragWouldDo) {
    CanvasOnDisplay canvas({400, 300});
    const auto cursorAt = [&](PixelPoint pixel) {
        canvas.move(pixel);
        return canvas.view->cursor().shape();
    };
    EXPECT_EQ(cursorAt({100, 100}), Qt::CrossCursor);
    canvas.select({100, 100}, {200, 200});
    const struct {
        PixelPoint pixel;
        Qt::CursorShape expected;
    } cases[] = {
        {{100, 100}, Qt::SizeFDiagCursor}, {{150, 95}, Qt::SizeVerCursor},
        {{205, 95}, Qt::SizeBDiagCursor},  {{193, 150}, Qt::SizeHorCursor},
        {{200, 200}, Qt::SizeFDiagCursor}, {{150, 208}, Qt::SizeVerCursor},
        {{100, 200}, Qt::SizeBDiagCursor}, {{100, 150}, Qt::SizeHorCursor},
        {{150, 150}, Qt::CrossCursor},     {{109, 150}, Qt::CrossCursor},
    };
    for (const auto& [pixel, expected] : cases)
        EXPECT_EQ(cursorAt(pixel), expected) << pixel.x << ", " << pixel.y;
}

TEST(OverlayCanvasView, OpensBlackWithoutACapture) {
    LogCapture log;
    FakeScreens screens({FakeScreens::display({200, 100})});
    FakePasteboard pasteboard;
    OverlayCanvasView view("/nowhere/glimmerly-capture-9.png", {0, 0, 200, 102}, {screens, pasteboard});
    view.resize(200, 102);
    const auto errors = log.withMessage("Capture PNG could not be loaded for overlay canvas");
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].level, GlimmerlyLog::Level::error);
    EXPECT_EQ(errors[0].category, "OverlayCanvas");
    EXPECT_EQ(errors[0].metadata->at("capture"), "glimmerly-capture-9.png");
    EXPECT_EQ(log.records().size(), 3U) << "besides the loaders' own two warnings";

    QImage black(200, 102, QImage::Format_RGB32);
    black.fill(Qt::black);
    EXPECT_EQ(view.grab().toImage().convertToFormat(QImage::Format_RGB32), black);
    EXPECT_FALSE(view.writeCroppedImageToPasteboard());
}

} // namespace
} // namespace glimmerly

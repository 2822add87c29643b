#include "tests/overlay_toolbar/ToolbarFixture.h"

#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ToolbarGrabHandleViewTest : public ToolbarFixture {
protected:
    [[nodiscard]] QPoint handle() const { return toolbar.pos() + QPoint(17, 22); }
};

TEST_F(ToolbarGrabHandleViewTest, ReportsThePointersWayWithYUpwards) {
    press(handle());
    moveTo(handle() + QPoint(10, -4));
    moveTo(handle() + QPoint(7, 30));
    release(handle() + QPoint(7, 30));
    EXPECT_THAT(takeReports(), ElementsAre("drag", "drop"));
    EXPECT_THAT(deltas, ElementsAre(Point{10, 4}, Point{-3, -34}));
    moveTo(handle());
    EXPECT_EQ(deltas.size(), 2U);
}

TEST_F(ToolbarGrabHandleViewTest, TheBarStaysUnderThePointerThatMovesIt) {
    toolbar.onHandleDragDelta = [this](double dx, double dy) {
        toolbar.move(toolbar.pos() + QPointF(dx, -dy).toPoint());
    };
    const QPoint start = handle();
    press(start);
    EXPECT_EQ(toolbar.cursor().shape(), Qt::ClosedHandCursor);
    for (int step = 1; step <= 20; ++step)
        moveTo(start + QPoint(3 * step, step));
    EXPECT_EQ(handle(), start + QPoint(60, 20));
    EXPECT_EQ(toolbar.cursor().shape(), Qt::ClosedHandCursor);
    release(handle());
    EXPECT_EQ(toolbar.cursor().shape(), Qt::OpenHandCursor);
}

TEST_F(ToolbarGrabHandleViewTest, ADragThatBeginsElsewhereIsNone) {
    press(toolbar.pos() + QPoint(4, 4));
    moveTo(handle());
    release(handle());
    QTest::mousePress(canvas.windowHandle(), Qt::RightButton, {}, handle());
    moveTo(handle() + QPoint(5, 5));
    QTest::mouseRelease(canvas.windowHandle(), Qt::RightButton, {}, handle());
    EXPECT_THAT(deltas, IsEmpty());
    EXPECT_THAT(takeReports(), IsEmpty());
}

} // namespace
} // namespace glimmerly

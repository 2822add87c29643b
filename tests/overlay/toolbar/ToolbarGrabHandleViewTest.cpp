#include "tests/overlay/toolbar/ToolbarFixture.h"

#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;

class ToolbarGrabHandleViewTest : public ToolbarFixture {
protected:
    [[nodiscard]] QPoint handle() const { return toolbar.pos() + QPoint(17, 22); }
};

TEST_F(ToolbarGrabHandleViewTest, ReportsTheWayOfThePointerThatMovesTheBar) {
    toolbar.onHandleDragDelta = [this](double dx, double dy) {
        deltas.push_back({dx, dy});
        toolbar.move(toolbar.pos() + QPointF(dx, -dy).toPoint()); // y upwards
    };
    const QPoint start = handle();
    press(start);
    moveTo(start + QPoint(10, -4));
    moveTo(start + QPoint(7, 30));
    EXPECT_EQ(toolbar.cursor().shape(), Qt::ClosedHandCursor);
    release(handle());
    EXPECT_EQ(toolbar.cursor().shape(), Qt::OpenHandCursor);
    EXPECT_EQ(handle(), start + QPoint(7, 30)) << "under the pointer";
    EXPECT_THAT(takeReports(), ElementsAre("drag", "drop"));
    EXPECT_THAT(deltas, ElementsAre(Point{10, 4}, Point{-3, -34}));
    moveTo(start);
    QTest::mousePress(canvas.windowHandle(), Qt::RightButton, {}, handle());
    moveTo(handle() + QPoint(5, 5));
    QTest::mouseRelease(canvas.windowHandle(), Qt::RightButton, {}, handle());
    EXPECT_EQ(deltas.size(), 2U);
    EXPECT_THAT(takeReports(), testing::IsEmpty()) << "another button drags nothing";
}

} // namespace
} // namespace glimmerly

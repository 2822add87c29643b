#include "tests/overlay/toolbar/ToolbarFixture.h"

#include <gmock/gmock.h>

namespace glimmerly {

void PrintTo(const ToolbarButtonLook& look, std::ostream* out) {
    *out << "background " << look.backgroundAlpha << ", icon " << look.iconScale;
}

namespace {

constexpr int boundMilliseconds = 5000;

class ToolbarIconButtonTest : public ToolbarFixture {
protected:
    static testing::AssertionResult settlesAt(const ToolbarIconButton& button, ToolbarButtonLook look) {
        if (QTest::qWaitFor([&] { return !button.isAnimating(); }, boundMilliseconds) &&
            button.look() == look)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(button.look());
    }
};

TEST_F(ToolbarIconButtonTest, ShowsHoverPressAndBeingLit) {
    ToolbarIconButton& tool = button("Arrow tool");
    ToolbarIconButton& undo = button("Undo");
    moveTo(centerOf(undo));
    EXPECT_TRUE(settlesAt(undo, {0.10, 1}));
    press(centerOf(undo));
    EXPECT_TRUE(settlesAt(undo, {0.18, 0.92}));
    release(centerOf(undo));
    EXPECT_TRUE(settlesAt(undo, {0.10, 1}));
    click("Arrow tool");
    EXPECT_TRUE(settlesAt(undo, {0, 1}));
    EXPECT_TRUE(settlesAt(tool, {0.25, 1}));
    press(centerOf(tool));
    EXPECT_TRUE(settlesAt(tool, {0.30, 0.92}));
    release(outside);
    EXPECT_TRUE(settlesAt(tool, {0.20, 1}));
}

TEST_F(ToolbarIconButtonTest, FiresOnlyWhenReleasedInside) {
    const ToolbarIconButton& done = button("Done");
    press(centerOf(done));
    moveTo(outside);
    EXPECT_FALSE(done.isDown());
    release(outside);
    EXPECT_TRUE(settlesAt(done, {0, 1}));
    EXPECT_THAT(takeReports(), testing::IsEmpty());

    press(centerOf(done));
    moveTo(outside);
    moveTo(centerOf(done));
    EXPECT_TRUE(done.isDown());
    EXPECT_TRUE(settlesAt(done, {0.18, 0.92}));
    release(centerOf(done));
    EXPECT_THAT(takeReports(), testing::ElementsAre("done"));
    EXPECT_THAT(canvas.presses, testing::IsEmpty());

    press(centerOf(done));
    toolbar.hide();
    EXPECT_EQ(done.look(), (ToolbarButtonLook{0, 1})) << "at once";
}

TEST_F(ToolbarIconButtonTest, OtherMouseButtonsDoNothing) {
    const QPoint center = centerOf("Done");
    QTest::mouseClick(canvas.windowHandle(), Qt::RightButton, {}, center);
    QTest::mouseClick(canvas.windowHandle(), Qt::MiddleButton, {}, center);
    EXPECT_THAT(takeReports(), testing::IsEmpty());
    press(center);
    QTest::mouseDClick(canvas.windowHandle(), Qt::LeftButton, {}, center);
    EXPECT_FALSE(takeReports().empty());
}

TEST_F(ToolbarIconButtonTest, EverySymbolExistsAndIsCentred) {
    for (const auto* candidate : toolbar.findChildren<QAbstractButton*>()) {
        const QImage picture = const_cast<QAbstractButton*>(candidate)->grab().toImage();
        const QRect ink = inkOf(picture, Qt::white);
        SCOPED_TRACE(candidate->accessibleName().toStdString());
        EXPECT_GE(ink.width(), 10);
        EXPECT_LE(std::abs(ink.left() + ink.right() - 27), 1);
        EXPECT_LE(std::abs(ink.top() + ink.bottom() - 27), 1);
    }
}

} // namespace
} // namespace glimmerly

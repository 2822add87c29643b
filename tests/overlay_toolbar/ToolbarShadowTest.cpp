#include "overlay/toolbar/ToolbarShadowView.h"
#include "tests/overlay_toolbar/ToolbarFixture.h"
#include "ui/ShadowImage.h"

namespace glimmerly {
namespace {

TEST(ShadowImage, IsSoftSymmetricAndFadesToNothing) {
    constexpr int reach = 28;
    const QImage shadow =
        shadowImage({509 + 2 * reach, 44 + 2 * reach}, {reach, reach, 509, 44}, {10, 12, 0.15});
    const auto alpha = [&](int x, int y) { return qAlpha(shadow.pixel(x, y)); };
    const int middle = shadow.width() / 2;
    EXPECT_NEAR(alpha(middle, reach), 0.15 * 255 / 2, 2) << "half of it lies beyond a long straight edge";
    EXPECT_LE(alpha(middle, 0), 1);
    EXPECT_EQ(alpha(0, 0), 0);
    for (int y = 0; y < shadow.height(); ++y) {
        ASSERT_LE(std::abs(alpha(middle, y) - alpha(middle, shadow.height() - 1 - y)), 1);
        ASSERT_LE(std::abs(alpha(20, y) - alpha(shadow.width() - 1 - 20, y)), 1);
    }
}

class ToolbarShadowViewTest : public ToolbarFixture {
protected:
    ToolbarShadowView& shadow() {
        for (auto* child : canvas.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (auto* found = dynamic_cast<ToolbarShadowView*>(child))
                return *found;
        throw std::logic_error("no shadow");
    }
    [[nodiscard]] int depthOf(const QWidget& child) const {
        return static_cast<int>(canvas.children().indexOf(&child));
    }
};

TEST_F(ToolbarShadowViewTest, FollowsTheToolbarAndHidesWithIt) {
    toolbar.move(80, 90);
    EXPECT_EQ(shadow().geometry().center() - toolbar.geometry().center(), QPoint(0, 3));
    toolbar.hide();
    EXPECT_TRUE(shadow().isHidden());
    toolbar.show();
    EXPECT_FALSE(shadow().isHidden());
    EXPECT_TRUE(shadow().geometry().contains(toolbar.geometry()));
}

TEST_F(ToolbarShadowViewTest, FallsOnWhatTheToolbarIsRaisedAboveAndTakesNoMouse) {
    QWidget text(&canvas);
    text.show();
    toolbar.raise();
    EXPECT_LT(depthOf(text), depthOf(shadow()));
    EXPECT_EQ(depthOf(shadow()) + 1, depthOf(toolbar));
    const QPoint belowBar(toolbar.geometry().center().x(), toolbar.geometry().bottom() + 5);
    press(belowBar);
    EXPECT_EQ(canvas.presses.size(), 1U);
}

TEST_F(ToolbarShadowViewTest, DarkensTheCanvasAroundTheBarAndNotTheBar) {
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    canvas.setPalette(palette);
    const QImage picture = canvas.grab().toImage();
    const QRect bar = toolbar.geometry();
    const auto level = [&](int x, int y) { return picture.pixelColor(x, y).red(); };
    EXPECT_LT(level(bar.center().x(), bar.bottom() + 2), level(bar.center().x(), bar.top() - 2));
    EXPECT_LT(level(bar.center().x(), bar.top() - 2), 255);
    EXPECT_EQ(level(bar.left() + 32 - 4, bar.center().y()), 255);
    EXPECT_EQ(level(2, 2), 255);
}

} // namespace
} // namespace glimmerly

#include "overlay/toolbar/ToolbarShadowView.h"
#include "tests/overlay/toolbar/ToolbarFixture.h"
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

TEST_F(ToolbarFixture, ItsShadowFollowsItHidesWithItAndTakesNoMouse) {
    const auto& shadow = [this]() -> QWidget& {
        for (auto* child : canvas.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (dynamic_cast<ToolbarShadowView*>(child))
                return *child;
        }
        throw std::logic_error("no shadow");
    }();
    toolbar.move(80, 90);
    EXPECT_EQ(shadow.geometry().center() - toolbar.geometry().center(), QPoint(0, 3));
    QWidget text(&canvas);
    text.show();
    toolbar.raise();
    const auto& stack = canvas.children();
    EXPECT_LT(stack.indexOf(&text), stack.indexOf(&shadow));
    EXPECT_EQ(stack.indexOf(&shadow) + 1, stack.indexOf(&toolbar));
    press(QPoint(toolbar.geometry().center().x(), toolbar.geometry().bottom() + 5));
    EXPECT_EQ(canvas.presses.size(), 1U);
    toolbar.hide();
    EXPECT_TRUE(shadow.isHidden());
}

} // namespace
} // namespace glimmerly

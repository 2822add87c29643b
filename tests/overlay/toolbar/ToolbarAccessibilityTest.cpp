#include "tests/overlay/toolbar/ToolbarFixture.h"

#include <QAccessible>

namespace glimmerly {
namespace {

class ToolbarAccessibilityTest : public ToolbarFixture {
protected:
    static QAccessibleInterface& of(QWidget& part) { return *QAccessible::queryAccessibleInterface(&part); }
    static void press(QAccessibleInterface& interface) {
        interface.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
};

TEST_F(ToolbarAccessibilityTest, AScreenReaderFindsEveryPartByNameAndRole) {
    QAccessibleInterface& bar = of(toolbar);
    EXPECT_EQ(bar.role(), QAccessible::ToolBar);
    ASSERT_EQ(bar.childCount(), 15);
    EXPECT_EQ(bar.child(0)->role(), QAccessible::Grip);
    for (int index = 1; index < bar.childCount(); ++index) {
        const QAccessibleInterface& part = *bar.child(index);
        const bool isAction = index >= 10;
        EXPECT_EQ(part.role(), isAction ? QAccessible::Button : QAccessible::CheckBox) << index;
        EXPECT_EQ(part.state().checkable, isAction ? 0U : 1U) << index;
        EXPECT_FALSE(part.text(QAccessible::Name).isEmpty()) << index;
        EXPECT_EQ(part.text(QAccessible::Name), static_cast<QWidget*>(part.object())->toolTip());
    }
}

TEST_F(ToolbarAccessibilityTest, ThePressOfAScreenReaderIsAPress) {
    QAccessibleInterface& arrow = of(button("Arrow tool"));
    press(arrow);
    ASSERT_TRUE(QTest::qWaitFor([&] { return reports.size() == 2; }, 5000));
    EXPECT_EQ(takeReports(), (std::vector<std::string>{"color red", "tool arrow"}));
    EXPECT_TRUE(arrow.state().checked);
    EXPECT_TRUE(of(button("Red")).state().checked);
    EXPECT_FALSE(of(button("Text tool")).state().checked);
    press(of(button("Done")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !reports.empty(); }, 5000));
    EXPECT_EQ(takeReports(), std::vector<std::string>{"done"});
}

} // namespace
} // namespace glimmerly

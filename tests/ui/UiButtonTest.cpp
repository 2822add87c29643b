#include "ui/UiButton.h"

#include "ui/UiColors.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

TEST(UiButtonTest, AnAmpersandIsPartOfTheLabel) {
    UiButton button("Quit & Reopen", {});
    const QString name = QAccessible::queryAccessibleInterface(&button)->text(QAccessible::Name);
    EXPECT_EQ(name, "Quit & Reopen");
    EXPECT_TRUE(button.shortcut().isEmpty());
    const int whole = button.sizeHint().width();
    button.setLabel("Quit  Reopen");
    EXPECT_GT(whole, button.sizeHint().width());
}

TEST(UiButtonTest, KeyboardFocusIsSeenAndAMouseClicksIsNot) {
    QWidget window;
    QVBoxLayout layout(&window);
    auto* first = new UiButton("first", {}, &window);
    auto* second = new UiButton("second", {.kind = ButtonKind::link}, &window);
    layout.addWidget(first);
    layout.addWidget(second);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (auto* button : {first, second}) {
        auto* other = button == first ? second : first;
        other->setFocus(Qt::MouseFocusReason);
        const QImage without = button->grab().toImage();
        button->setFocus(Qt::TabFocusReason);
        EXPECT_NE(button->grab().toImage(), without);
        other->setFocus(Qt::MouseFocusReason);
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_TRUE(button->hasFocus());
        EXPECT_EQ(button->grab().toImage(), without);
    }
}

} // namespace
} // namespace glimmerly

#include "capture/onboarding/PermissionsWindowController.h"

#include "tests/capture/onboarding/OnboardingFixture.h"
#include "tests/support/Widgets.h"

#include <QApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

namespace glimmerly {
namespace {

using testing::ElementsAre;

struct PermissionsWindowControllerTest : OnboardingFixture {
    void show() {
        controller.showIfNeeded();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        QApplication::setActiveWindow(&window);
    }
    QPushButton& button(const QString& name) { return widgetNamed<QPushButton>(name, window); }

    PermissionsWindowController controller{services};
    QWidget& window = controller.window();
};

TEST_F(PermissionsWindowControllerTest, WithThePermissionNothingIsShown) {
    screenRecording.granted = true;
    controller.showIfNeeded();
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(controller.model().isPolling());
    EXPECT_EQ(storedAnswer(), "true");
    EXPECT_TRUE(telemetry.events.empty());
}

TEST_F(PermissionsWindowControllerTest, WithoutItTheWindowExplainsAndWaits) {
    show();
    EXPECT_EQ(storedAnswer(), "false");
    EXPECT_THAT(events(), ElementsAre("permission_onboarding_shown"));
    EXPECT_EQ(application.activations, 1);
    EXPECT_TRUE(controller.model().isPolling());
    EXPECT_EQ(window.size(), QSize(560, 640).boundedTo(window.maximumSize()));
    EXPECT_THAT(shownTexts(window),
                ElementsAre("Screen Recording",
                            "Glimmerly needs this to capture your display and show it in the annotation "
                            "overlay.",
                            "How to enable", "Open System Settings → Privacy & Security → Screen Recording.",
                            "Turn on the switch for Glimmerly.",
                            "Choose Quit & Reopen below if macOS asks you to quit Glimmerly, then press "
                            "Continue.",
                            controller.model().detailText()));
    EXPECT_TRUE(button("Open System Settings…").isEnabled());
    window.close();
    EXPECT_FALSE(controller.model().isPolling()) << "closed by any means";
}

TEST_F(PermissionsWindowControllerTest, KeysWorkWhateverHasTheFocus) {
    show();
    button("Open System Settings…").setFocus();
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(screenRecording.settingsOpened, 0);
    EXPECT_TRUE(window.isVisible());
    EXPECT_NE(shownTexts(window).back().find("Screen Recording is still off."), std::string::npos);
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(application.newInstances.size(), 1u);
    EXPECT_TRUE(window.isVisible());
    QTest::keyClick(window.focusWidget(), Qt::Key_Space);
    EXPECT_EQ(screenRecording.settingsOpened, 1);
    screenRecording.granted = true;
    QTest::keyClick(window.focusWidget(), Qt::Key_Enter);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(PermissionsWindowControllerTest, TextsAThirdLongerStillFit) {
    show();
    expectThatLongerTextsFit(window, {480, 420});
    EXPECT_GT(window.findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
}

} // namespace
} // namespace glimmerly

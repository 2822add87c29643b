#include "capture/onboarding/PermissionsWindowController.h"

#include "tests/capture/onboarding/OnboardingFixture.h"
#include "ui/UiButton.h"
#include "ui/UiText.h"

#include <QApplication>
#include <QScrollArea>
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
    UiButton& button(const QString& name) {
        for (auto* candidate : window.findChildren<QPushButton*>()) {
            if (candidate->accessibleName() == name)
                return static_cast<UiButton&>(*candidate);
        }
        throw std::runtime_error("no button " + name.toStdString());
    }
    /// Every piece of text from top to bottom.
    std::vector<std::string> texts() {
        std::vector<std::string> found;
        for (const auto* label : window.findChildren<QLabel*>())
            found.push_back(label->text().toStdString());
        return found;
    }

    PermissionsWindowController controller{services};
    QWidget& window = controller.window();
};

TEST_F(PermissionsWindowControllerTest, WithThePermissionNothingIsShown) {
    access.granted = true;
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
    EXPECT_THAT(texts(),
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
    EXPECT_EQ(access.settingsOpened, 0);
    EXPECT_TRUE(window.isVisible());
    EXPECT_NE(texts().back().find("Screen Recording is still off."), std::string::npos);
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(application.newInstances.size(), 1u);
    EXPECT_TRUE(window.isVisible());
    QTest::keyClick(window.focusWidget(), Qt::Key_Space);
    EXPECT_EQ(access.settingsOpened, 1);
    access.granted = true;
    QTest::keyClick(window.focusWidget(), Qt::Key_Enter);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(PermissionsWindowControllerTest, TextsAThirdLongerStillFit) {
    show();
    for (auto* label : window.findChildren<QLabel*>())
        label->setText(label->text() + label->text().left(label->text().size() / 3));
    for (auto* each : window.findChildren<QPushButton*>()) {
        auto* grown = static_cast<UiButton*>(each);
        grown->setLabel(grown->accessibleName() + grown->accessibleName().left(grown->text().size() / 3));
    }
    window.setFixedSize(480, 420);
    QCoreApplication::processEvents();
    const auto* area = window.findChild<QScrollArea*>();
    EXPECT_EQ(area->widget()->width(), area->viewport()->width()) << "nothing to scroll sideways";
    EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
    for (const auto* child : area->widget()->findChildren<QWidget*>()) {
        const auto place = QRect(child->mapTo(area->widget(), QPoint()), child->size());
        EXPECT_TRUE(area->widget()->rect().contains(place)) << child->accessibleName().toStdString();
        const auto* label = qobject_cast<const QLabel*>(child);
        const int needed = label ? label->heightForWidth(label->width()) : 0;
        EXPECT_GE(child->height(), needed);
    }
}

} // namespace
} // namespace glimmerly

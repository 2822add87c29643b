#include "settings/AboutPreferencesPane.h"
#include "settings/GeneralPreferencesPane.h"
#include "tests/settings/SettingsFixture.h"

#include <QAccessible>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QSplitter>

namespace glimmerly {
namespace {

using testing::Contains;
using testing::ElementsAre;

struct SettingsWindowTest : SettingsFixture {
    QListWidget& sidebar() { return find<QListWidget>("Categories"); }
    template <typename Pane>
    Pane& pane() {
        for (auto* child : window.findChildren<QScrollArea*>()) {
            if (auto* found = dynamic_cast<Pane*>(child))
                return *found;
        }
        throw std::runtime_error("no such pane yet");
    }
};

TEST_F(SettingsWindowTest, ComesBackTheSameInFrontOfEverything) {
    int announced = 0;
    const auto observation = notifications.observe("GlimmerlySettingsWindowWillShow", [&] {
        ++announced;
        EXPECT_FALSE(window.isVisible());
    });
    controller.show();
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(application.activations, 0) << "on a later turn";
    mainQueue.runAll();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(application.activations, 1);
    EXPECT_EQ(window.size(), QSize(720, 600).boundedTo(window.maximumSize()));
    EXPECT_EQ(root.selectedPane(), SettingsPane::general);

    QTest::keyClick(&sidebar(), Qt::Key_Down);
    EXPECT_EQ(root.selectedPane(), SettingsPane::about);
    window.close();
    EXPECT_FALSE(window.isVisible());
    const auto size = window.size();
    window.setFixedSize(root.minimumSize()); // as on a display that was small
    controller.show();
    mainQueue.runAll();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.size(), size);
    EXPECT_EQ(root.selectedPane(), SettingsPane::about);
    EXPECT_THAT(texts(), Contains("Version 1.4.2"));
}

TEST_F(SettingsWindowTest, WithoutASelectionThePlaceholderSaysWhatToDo) {
    show();
    QTest::mouseClick(sidebar().viewport(), Qt::LeftButton, Qt::ControlModifier,
                      sidebar().visualItemRect(sidebar().item(0)).center());
    EXPECT_EQ(root.selectedPane(), std::nullopt);
    EXPECT_THAT(texts(), ElementsAre("Select a category", "Choose a category in the sidebar."));
}

TEST_F(SettingsWindowTest, NothingHidesTheSidebar) {
    show();
    auto& split = *window.findChild<QSplitter*>();
    auto* column = split.widget(0);
    const auto isWhole = [&] { return sidebar().isVisible() && column->geometry().left() == 0; };
    ASSERT_EQ(column->width(), 200);
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"the divider", [&] { split.setSizes({0, split.width()}); }},
        {"the program", [&] { column->hide(); }},
        {"a command", [&] { root.setColumnVisibility(ColumnVisibility::detailOnly); }},
    };
    for (const auto& [way, hide] : ways) {
        hide();
        mainQueue.runAll();
        EXPECT_TRUE(isWhole()) << way;
        EXPECT_EQ(column->width(), 200) << way;
        EXPECT_EQ(root.columnVisibility(), ColumnVisibility::all) << way;
    }
    EXPECT_FALSE(split.isCollapsible(0));
}

TEST_F(SettingsWindowTest, ThePermissionIsFollowedWhileItIsOnTheScreen) {
    show();
    auto& general = pane<GeneralPreferencesPane>();
    EXPECT_THAT(texts(),
                ElementsAre("General", "SHORTCUTS", "Take screenshot", "PRIVACY", "Screen Recording",
                            "Granted", "Required to capture the display for the annotation overlay."));
    screenRecording.granted = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !general.screenCaptureGranted(); }, 1900));
    EXPECT_THAT(texts(), Contains("Not granted"));
    QTest::mouseClick(&button("Open System Settings…"), Qt::LeftButton);
    EXPECT_EQ(screenRecording.settingsOpened, 1);
    root.setSelectedPane(SettingsPane::about);
    EXPECT_FALSE(general.isPolling());
    screenRecording.granted = true;
    root.setSelectedPane(SettingsPane::general);
    EXPECT_TRUE(general.isPolling());
    EXPECT_TRUE(general.screenCaptureGranted()) << "at once";
    window.close();
    EXPECT_FALSE(general.isPolling());
}

TEST_F(SettingsWindowTest, UpdatesFollowTheUpdaterAndChangeIt) {
    root.setSelectedPane(SettingsPane::about);
    show();
    auto& check = button("Check for Updates…");
    auto& automatic = find<QAbstractButton>("Automatically check for updates");
    auto& downloads = find<QAbstractButton>("Download updates in the background");
    EXPECT_FALSE(check.isEnabled());
    EXPECT_FALSE(downloads.isEnabled());
    EXPECT_TRUE(automatic.isEnabled());
    updater.set(UpdaterFlag::allowsAutomaticUpdates, true);
    updater.set(UpdaterFlag::canCheckForUpdates, true);
    QTest::mouseClick(&automatic, Qt::LeftButton);
    QTest::keyClick(&downloads, Qt::Key_Space);
    EXPECT_TRUE(updater.value(UpdaterFlag::automaticallyChecksForUpdates));
    EXPECT_TRUE(updater.value(UpdaterFlag::automaticallyDownloadsUpdates));

    updater.set(UpdaterFlag::automaticallyChecksForUpdates, false);
    EXPECT_FALSE(automatic.isChecked());
    EXPECT_TRUE(downloads.isChecked());
    QTest::mouseClick(&check, Qt::LeftButton);
    EXPECT_EQ(checks, 1);
}

TEST_F(SettingsWindowTest, LinksLeadToTheAddressesOfTheBundle) {
    root.setSelectedPane(SettingsPane::about);
    show();
    QTest::mouseClick(&button("Website"), Qt::LeftButton);
    QTest::mouseClick(&button("Donate"), Qt::LeftButton);
    EXPECT_THAT(links.opened, ElementsAre("https://site.example", "https://site.example/donate"));
}

TEST_F(SettingsWindowTest, TheFormIsModalAndKeepsItsTextsWithTheWindow) {
    root.setSelectedPane(SettingsPane::about);
    show();
    auto& about = pane<AboutPreferencesPane>();
    button("Report a bug").setFocus(Qt::TabFocusReason);
    QTest::keyClick(window.focusWidget(), Qt::Key_Space);
    ASSERT_TRUE(about.isShowingBugReportSheet());
    auto* title = &find<QLineEdit>("Title");
    EXPECT_EQ(window.focusWidget(), title);
    std::vector<std::string> stops;
    for (int stop = 0; stop < 4; ++stop) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        stops.push_back(window.focusWidget()->accessibleName().toStdString());
    }
    EXPECT_THAT(stops, ElementsAre("Email", "Description", "Cancel", "Title")) << "nothing of the window";
    QTest::keyClick(title, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(window.focusWidget(), &button("Cancel"));
    title->setText("It broke");
    window.close();
    show();
    EXPECT_TRUE(about.isShowingBugReportSheet());
    EXPECT_EQ(find<QLineEdit>("Title").text(), "It broke");

    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    mainQueue.runAll();
    EXPECT_FALSE(about.isShowingBugReportSheet());
    EXPECT_EQ(window.focusWidget(), &button("Report a bug"));
}

TEST_F(SettingsWindowTest, WhatIsBelowTheFormLooksAsBeforeButIsOutOfReach) {
    root.setSelectedPane(SettingsPane::about);
    show();
    auto& about = pane<AboutPreferencesPane>();
    auto& website = button("Website");
    const auto isPressed = [&] {
        auto* control = QAccessible::queryAccessibleInterface(&website)->actionInterface();
        control->doAction(QAccessibleActionInterface::pressAction());
        return website.isDown();
    };
    const QImage before = root.grab().toImage();
    about.showBugReportSheet();
    EXPECT_NE(window.childAt(website.mapTo(&window, QPoint(2, 2))), &website) << "covered";
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&find<QWidget>("Report a Bug"))->role(),
              QAccessible::Dialog);
    EXPECT_EQ(root.grab().toImage(), before);
    EXPECT_FALSE(isPressed()) << "by assistive technology";

    updater.set(UpdaterFlag::canCheckForUpdates, true);
    root.setSelectedPane(SettingsPane::general);
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    mainQueue.runAll();
    EXPECT_TRUE(window.focusWidget()->isVisible()) << "where the keyboard was is no longer to be seen";
    EXPECT_TRUE(window.focusWidget()->isEnabled());
    root.setSelectedPane(SettingsPane::about);
    EXPECT_TRUE(button("Check for Updates…").isEnabled());
    EXPECT_TRUE(isPressed());
    about.showBugReportSheet();
    EXPECT_EQ(find<QLineEdit>("Title").text(), "") << "empty each time";
}

TEST_F(SettingsWindowTest, TheMenuIsOfferedWhereNoStatusAreaShowsIt) {
    show();
    EXPECT_THROW(button("Menu"), std::runtime_error);
    window.close();
    statusItem.isHosted = false;
    show();
    QTest::mouseClick(&button("Menu"), Qt::LeftButton);
    EXPECT_EQ(statusItem.popUps, 1);
}

TEST_F(SettingsWindowTest, TextsAThirdLongerStillFit) {
    show();
    for (const auto pane : {SettingsPane::general, SettingsPane::about}) {
        root.setSelectedPane(pane);
        expectThatLongerTextsFit(window, root.minimumSize());
    }
}

} // namespace
} // namespace glimmerly

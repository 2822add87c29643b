#include "hotkeys/recorder/HotkeyRecorder.h"

#include "platform/OverlayWindows.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RecorderServices.h"
#include "ui/UiColors.h"
#include "ui/UiText.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QVBoxLayout>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

QString nameOf(QAbstractButton& button) {
    return QAccessible::queryAccessibleInterface(&button)->text(QAccessible::Name);
}

class HotkeyRecorderTest : public testing::Test {
protected:
    HotkeyRecorderTest() {
        recorder = new HotkeyRecorder(desktop.services, new UiLabel("Hotkey", text_style::body), &window);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(recorder);
        window.resize(480, 60);
        window.show();
        QApplication::setActiveWindow(&window);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QAbstractButton& leading() { return recorder->leadingSegment(); }
    QAbstractButton& trailing() { return recorder->trailingSegment(); }
    void click(QAbstractButton& segment) {
        QTest::mouseClick(&segment, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    void press(const KeyDownEvent& key) {
        desktop.events.press(key);
        QCoreApplication::processEvents();
    }
    void expectShown(const char* leadingText, const char* trailingLabel) {
        EXPECT_EQ(nameOf(leading()).toStdString(), leadingText);
        EXPECT_EQ(nameOf(trailing()).toStdString(), trailingLabel);
        EXPECT_EQ(leading().text(), nameOf(leading()));
    }

    LogCapture log;
    RecorderServices desktop;
    QWidget window;
    HotkeyRecorder* recorder = nullptr;
};

TEST_F(HotkeyRecorderTest, EachSegmentDoesWhatItSays) {
    expectShown("⇧⌘ A", "Clear");
    click(leading());
    expectShown("Type Hotkey", "Cancel");
    click(leading());
    expectShown("⇧⌘ A", "Clear");
    click(leading());
    click(trailing());
    expectShown("⇧⌘ A", "Clear");

    click(trailing());
    expectShown("Record Hotkey", "Record");
    EXPECT_FALSE(recorder->model().isRecording());
    EXPECT_FALSE(desktop.preferences.data(HotkeySettings::defaultsKey));
    click(trailing());
    expectShown("Type Hotkey", "Cancel");
    press(recorder_key::escape);
    expectShown("Record Hotkey", "Record");
    click(leading());
    press(recorder_key::controlOptionCommandSpace);
    expectShown("⌃⌥⌘ Space", "Clear");

    desktop.settings.setKeyCombination(HotkeySettings::defaultCombination);
    QCoreApplication::processEvents();
    expectShown("⇧⌘ A", "Clear");
    desktop.layout.change({{0, "q"}});
    expectShown("⇧⌘ Q", "Clear");
}

TEST_F(HotkeyRecorderTest, TellsOnceThatAHotkeyIsReservedAndGoesOn) {
    desktop.symbolicHotKeys.entries = {{true, 0, hotkey_modifier::control}};
    int openWhilePressed = 0;
    desktop.alerts.onRun = [&] {
        press({0, event_modifier::control});
        openWhilePressed = static_cast<int>(desktop.alerts.shown.size());
    };
    click(leading());
    press({0, event_modifier::control});
    ASSERT_EQ(desktop.alerts.shown.size(), 1U);
    EXPECT_EQ(openWhilePressed, 1);
    EXPECT_EQ(desktop.alerts.shown[0].messageText, "Hotkey is reserved by macOS");
    EXPECT_THAT(desktop.alerts.shown[0].buttons, testing::ElementsAre("OK"));
    EXPECT_FALSE(recorder->model().isPresentingSystemReservedError());
    expectShown("Type Hotkey", "Cancel");

    EXPECT_FALSE(desktop.alerts.shown[0].stop.stop_requested());

    for (const std::function<void()>& end : std::initializer_list<std::function<void()>>{
             [&] { window.hide(); }, [&] { delete std::exchange(recorder, nullptr); }}) {
        window.show();
        recorder->model().startRecording();
        desktop.alerts.onRun = [&] {
            end();
            EXPECT_TRUE(desktop.alerts.shown.back().stop.stop_requested());
        };
        press({0, event_modifier::control});
        EXPECT_EQ(desktop.events.monitorCount(), 0U);
    }
    EXPECT_EQ(desktop.alerts.shown.size(), 3U);
}

TEST_F(HotkeyRecorderTest, DoesNotTellOfAReservedHotkeyOnceItIsHidden) {
    desktop.symbolicHotKeys.entries = {{true, 0, hotkey_modifier::control}};
    click(leading());
    desktop.events.press({0, event_modifier::control});
    window.hide();
    QCoreApplication::processEvents();
    EXPECT_TRUE(desktop.alerts.shown.empty());
}

TEST_F(HotkeyRecorderTest, ARecorderThatIsNotToBeSeenDoesNotRecord) {
    click(leading());
    window.hide();
    EXPECT_FALSE(recorder->model().isRecording());
    EXPECT_EQ(desktop.registered().size(), 1U);
    window.show();
    QCoreApplication::processEvents();
    expectShown("⇧⌘ A", "Clear");
    click(leading());
    desktop.notifications.post(OverlayWindows::willShowNotification);
    EXPECT_FALSE(recorder->model().isRecording());
}

TEST_F(HotkeyRecorderTest, IsAPillOfTwoSegmentsAtTheEndOfTheRow) {
    const QRect first(leading().mapTo(recorder, QPoint()), leading().size());
    const QRect second(trailing().mapTo(recorder, QPoint()), trailing().size());
    EXPECT_EQ(first.size(), QSize(107, 24));
    EXPECT_EQ(second.size(), QSize(24, 24));
    EXPECT_EQ(second.left() - first.right() - 1, 1);
    EXPECT_EQ(second.right(), recorder->rect().right());

    const QImage picture = leading().grab().toImage();
    EXPECT_NE(picture.pixelColor(0, 12), picture.pixelColor(0, 0)) << "a round corner";
    EXPECT_EQ(picture.pixelColor(106, 0), picture.pixelColor(106, 12)) << "a square one";
    // What is cut off at a corner takes no clicks.
    QTest::mouseClick(&leading(), Qt::LeftButton, {}, QPoint(0, 23));
    EXPECT_FALSE(recorder->model().isRecording());
    QTest::mouseClick(&leading(), Qt::LeftButton, {}, QPoint(106, 0));
    EXPECT_TRUE(recorder->model().isRecording());
}

TEST_F(HotkeyRecorderTest, PressedHighlightedAndFocusedAreToBeSeen) {
    const auto fillOf = [this] { return leading().grab().toImage().pixelColor(100, 3); };
    const QColor idle = fillOf();
    QTest::mousePress(&leading(), Qt::LeftButton);
    const QColor pressed = fillOf();
    EXPECT_NE(pressed, idle);
    QTest::mouseRelease(&leading(), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(fillOf(), pressed) << "while recording";
    QTest::mousePress(&leading(), Qt::LeftButton);
    EXPECT_EQ(fillOf(), idle) << "pressed while recording";
    QTest::mouseRelease(&leading(), Qt::LeftButton);
    QCoreApplication::processEvents();

    for (auto* segment : {&leading(), &trailing()}) {
        auto& other = segment == &leading() ? trailing() : leading();
        other.setFocus(Qt::TabFocusReason);
        const QImage without = segment->grab().toImage();
        segment->setFocus(Qt::TabFocusReason);
        EXPECT_NE(segment->grab().toImage(), without);
        QTest::keyClick(segment, Qt::Key_Space);
        QCoreApplication::processEvents();
        EXPECT_NE(nameOf(*segment), segment == &leading() ? "⇧⌘ A" : "Clear");
        recorder->model().stopRecording();
        QCoreApplication::processEvents();
    }
}

} // namespace
} // namespace glimmerly

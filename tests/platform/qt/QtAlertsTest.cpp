#include "platform/qt/QtAlerts.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <gtest/gtest.h>

namespace glimmerly {
namespace {

/// Runs `act` with the message box once one is open, from within its event loop.
void whenOpen(std::function<void(QMessageBox&)> act) {
    QTimer::singleShot(0, [act = std::move(act)] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box && box->isVisible())
            act(*box);
        else
            whenOpen(act);
    });
}

QAbstractButton* buttonTitled(const QMessageBox& box, const QString& title) {
    for (QAbstractButton* button : box.buttons()) {
        if (button->text() == title)
            return button;
    }
    return nullptr;
}

TEST(QtAlertsTest, ShowsTheAlertInFrontWhileTheMainLoopGoesOn) {
    int turns = 0;
    whenOpen([&](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.text(), "Screenshot failed");
        EXPECT_EQ(box.informativeText(), "It could not.\n\n<b>Why</b>");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_TRUE(box.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        EXPECT_EQ(box.buttons().size(), 1);
        QTimer::singleShot(0, [&] { ++turns; });
        QTimer::singleShot(1, &box, [&] { QTest::keyClick(&box, Qt::Key_Return); });
    });
    const int choice = QtAlerts().runModal({.style = AlertStyle::warning,
                                            .messageText = "Screenshot failed",
                                            .informativeText = "It could not.\n\n<b>Why</b>",
                                            .buttons = {"OK"}});
    EXPECT_EQ(choice, 0);
    EXPECT_EQ(turns, 1);
}

TEST(QtAlertsTest, LeavesOurOtherWindowsInUse) {
    QLineEdit overlay;
    overlay.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&overlay));
    whenOpen([&](QMessageBox& box) {
        overlay.activateWindow();
        QTest::keyClick(overlay.windowHandle(), Qt::Key_A);
        box.accept();
    });
    QtAlerts().runModal({.messageText = "Wait", .informativeText = "", .buttons = {"OK"}});
    EXPECT_EQ(overlay.text(), "a");
}

TEST(QtAlertsTest, AnswersWithTheButtonThatWasChosen) {
    std::stop_source stop;
    const Alert alert{.style = AlertStyle::informational,
                      .messageText = "Go?",
                      .informativeText = "",
                      .buttons = {"Go", "Wait", "Cancel"},
                      .stop = stop.get_token()};
    whenOpen([](QMessageBox& box) { buttonTitled(box, "Wait")->click(); });
    EXPECT_EQ(QtAlerts().runModal(alert), 1);
    whenOpen([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(QtAlerts().runModal(alert), 0);
    whenOpen([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(QtAlerts().runModal(alert), 2);
    whenOpen([&](QMessageBox&) { stop.request_stop(); });
    EXPECT_EQ(QtAlerts().runModal(alert), 2);
    EXPECT_EQ(QtAlerts().runModal(alert), 2) << "stopped before it is shown";
}

} // namespace
} // namespace glimmerly

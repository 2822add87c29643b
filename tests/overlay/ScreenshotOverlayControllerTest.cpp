#include "overlay/toolbar/OverlayToolbarView.h"
#include "overlay/toolbar/ToolbarIconButton.h"
#include "tests/overlay/ControllerFixture.h"
#include "tests/support/Widgets.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>
#include <QTextEdit>
#include <QWindow>
#include <gmock/gmock.h>

namespace glimmerly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view copyFailure =
    "Copy selection to pasteboard returned false (missing crop bitmap or pasteboard write failed)";

enum class KeyRepeat { first, repeated };

class ScreenshotOverlayControllerTest : public ControllerFixture {
protected:
    /// Sends a key press the way the desktop does: to the window, not to a widget. True when it got through
    /// to the focused widget.
    bool press(int key, KeyRepeat repeat = KeyRepeat::first) {
        QPointer<QWidget> window = controller->window();
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), repeat == KeyRepeat::repeated);
        typed.clear();
        QCoreApplication::sendEvent(window->windowHandle(), &event);
        return !typed.empty();
    }

    /// Makes a child of the canvas, which keeps the keys typed into it, the first responder.
    void typeIntoAnEditor() {
        class Recorder : public QTextEdit {
        public:
            Recorder(QWidget* parent, std::vector<int>& keys) : QTextEdit(parent), keys_(keys) {}
            void keyPressEvent(QKeyEvent* event) override { keys_.push_back(event->key()); }

        private:
            std::vector<int>& keys_;
        };
        auto* editor = new Recorder(controller->window()->contentView(), typed);
        editor->show();
        editor->setFocus();
    }

    std::vector<int> typed;
};

TEST_F(ScreenshotOverlayControllerTest, OpensTwoPointsTallerOnTheScreenNowUnderTheMouse) {
    Screen right = FakeScreens::display({1500, 750}, 1.5, 2);
    right.frame = right.frame.offsetBy(1280, 40);
    screens.all.push_back(right);
    screens.mouse = {1300, 100};
    controller->presentOverlay(newCapture());

    EXPECT_EQ(overlayWindows.screen, right);
    EXPECT_EQ(overlayWindows.frame, (Rect{1280, 40, 1000, 502}));
    EXPECT_EQ(controller->window()->contentView()->bounds(), (Rect{0, 0, 1000, 502}));
    EXPECT_EQ(controller->window()->contentView()->geometry(), QRect(0, 0, 1000, 502));
    EXPECT_EQ(controller->window()->focusWidget(), controller->window()->contentView());
    const auto lines = log.withMessage("Screenshot overlay presenting");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].level, GlimmerlyLog::Level::notice);
    EXPECT_EQ(lines[0].category, "Overlay");
    EXPECT_EQ(lines[0].metadata->at("capture"), "glimmerly-capture-1.png");
}

TEST_F(ScreenshotOverlayControllerTest, ClosesInOrderAndOnlyOnce) {
    const auto file = newCapture();
    std::vector<std::string> steps;
    const auto note = [&](const std::string& step) {
        return [&, step] { steps.push_back(step + (exists(file) ? "" : " after the file went")); };
    };
    workspace.frontmost = std::make_shared<FakeRunningApplication>("org.example.Editor");
    workspace.frontmost->onActivate = note("activate");
    overlayWindows.onOrderOut = note("order out");
    controller->presentOverlay(file);
    workspace.frontmost = std::make_shared<FakeRunningApplication>("org.example.CameLater");

    controller->closeOverlay();
    controller->closeOverlay();
    EXPECT_THAT(steps, ElementsAre("order out", "activate"));
    EXPECT_EQ(controller->window(), nullptr);
    EXPECT_FALSE(exists(file));
}

TEST_F(ScreenshotOverlayControllerTest, RestoresAnyApplicationButThisOne) {
    const auto activationsAfterOverlay = [&](std::optional<std::string> identifier) {
        const auto frontmost = std::make_shared<FakeRunningApplication>(std::move(identifier));
        workspace.frontmost = frontmost;
        controller->presentOverlay(newCapture());
        controller->closeOverlay();
        return frontmost->activations;
    };
    EXPECT_EQ(activationsAfterOverlay("org.example.Editor"), 1);
    EXPECT_EQ(activationsAfterOverlay("app.glimmerly.Glimmerly"), 0);
    EXPECT_EQ(activationsAfterOverlay(std::nullopt), 1);
    overlayWindows.hasKeyboard = false;
    EXPECT_EQ(activationsAfterOverlay("org.example.Editor"), 0) << "the user works elsewhere meanwhile";
    overlayWindows.hasKeyboard = true;

    controller = makeController(std::nullopt);
    EXPECT_EQ(activationsAfterOverlay("org.example.Editor"), 1);
    EXPECT_EQ(activationsAfterOverlay(std::nullopt), 0) << "two missing identifiers are equal";
}

TEST_F(ScreenshotOverlayControllerTest, ANewCaptureReplacesTheOpenOne) {
    const auto first = newCapture("first.png");
    const auto second = newCapture("second.png");
    controller->presentOverlay(first);
    const QPointer<QWidget> firstCanvas = controller->window()->contentView();
    controller->presentOverlay(second);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_EQ(firstCanvas, nullptr);
    EXPECT_FALSE(exists(first));
    EXPECT_TRUE(exists(second));
    EXPECT_TRUE(controller->window()->isVisible());
}

TEST_F(ScreenshotOverlayControllerTest, KeepsItsWindowUntilTheScreenChanges) {
    controller->presentOverlay(newCapture());
    const QPointer<QWidget> window = controller->window();
    controller->closeOverlay();
    EXPECT_TRUE(window->isHidden());
    controller->presentOverlay(newCapture());
    EXPECT_EQ(controller->window(), window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(controller->window()->contentView()->isVisible());
    EXPECT_EQ(window->focusWidget(), controller->window()->contentView());
    controller->closeOverlay();

    screens.all = {FakeScreens::display({1920, 1200}, 1.5)};
    controller->presentOverlay(newCapture());
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(overlayWindows.screen, screens.all[0]);
    EXPECT_EQ(controller->window()->contentView()->size(), QSize(1280, 802));
}

TEST_F(ScreenshotOverlayControllerTest, AFileThatCannotBeDeletedIsLoggedAndForgotten) {
    const auto file = newCapture();
    controller->presentOverlay(file);
    std::filesystem::remove(file);
    controller->closeOverlay();
    controller->closeOverlay();

    const auto lines = log.withMessage("Temp capture PNG could not be deleted");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].level, GlimmerlyLog::Level::warning);
    EXPECT_EQ(lines[0].metadata->at("path"), "glimmerly-capture-1.png");
    EXPECT_EQ(lines[0].metadata->at("errorDomain"), "POSIX");
    EXPECT_EQ(lines[0].metadata->at("errorCode"), std::to_string(ENOENT));
}

TEST_F(ScreenshotOverlayControllerTest, WithoutAnyScreenNothingOpensAndNothingStays) {
    screens = FakeScreens();
    controller->presentOverlay(newCapture());
    EXPECT_EQ(controller->window(), nullptr);
    EXPECT_THAT(directory.names(), IsEmpty());
}

TEST_F(ScreenshotOverlayControllerTest, EscapeClosesAlsoWhileTyping) {
    const auto file = newCapture();
    controller->presentOverlay(file);
    typeIntoAnEditor();
    EXPECT_FALSE(press(Qt::Key_Escape));
    EXPECT_FALSE(controller->window() || exists(file));
    ASSERT_EQ(telemetry.events.size(), 2u);
    EXPECT_EQ(telemetry.events[0], (FakeTelemetry::Event{"overlay_opened", {}}));
    EXPECT_EQ(telemetry.events[1].name, "overlay_dismissed");
    EXPECT_EQ(telemetry.events[1].properties.at("source"), "esc");
    controller->presentOverlay(newCapture());
    controller->closeOverlay();
    EXPECT_EQ(telemetry.events.size(), 3u) << "closed for another capture, it is not dismissed";
}

TEST_F(ScreenshotOverlayControllerTest, ReturnCopiesTheSelectionAndCloses) {
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        const auto file = newCapture();
        controller->presentOverlay(file);
        select();
        pasteboard.outcome = PasteboardOutcome::refused;
        EXPECT_FALSE(press(key));
        EXPECT_TRUE(controller->window() && exists(file)) << "all as it was, so that the user may try again";
        pasteboard.outcome = PasteboardOutcome::written;
        EXPECT_FALSE(press(key));
        EXPECT_FALSE(controller->window() || exists(file));
        EXPECT_EQ(std::exchange(pasteboard.image, {}).value().size(), (PixelSize{100, 50}));
    }
    EXPECT_EQ(log.withMessage(copyFailure).size(), 2u);
    EXPECT_EQ(log.withMessage("writeCroppedImageToPasteboard returned false").size(), 2u);
    EXPECT_FALSE(controller->copyAndDismiss()) << "no overlay is open";
}

TEST_F(ScreenshotOverlayControllerTest, ReturnWithoutASelectionCopiesNothingNorDoesItWhileTyping) {
    controller->presentOverlay(newCapture());
    EXPECT_FALSE(press(Qt::Key_Return)) << "swallowed although there is nothing to copy";
    EXPECT_FALSE(press(Qt::Key_Enter));
    const auto lines = log.withMessage(copyFailure);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].level, GlimmerlyLog::Level::error);
    EXPECT_EQ(lines[0].category, "Overlay");
    EXPECT_TRUE(controller->window()->isVisible()) << "a failed copy leaves the overlay open";

    typeIntoAnEditor();
    EXPECT_TRUE(press(Qt::Key_Return));
    EXPECT_TRUE(press(Qt::Key_Enter));
    EXPECT_FALSE(controller->copyAndDismiss());
    EXPECT_TRUE(press(Qt::Key_A)) << "other keys go where they always go";
    EXPECT_EQ(log.withMessage(copyFailure).size(), 2u);
    EXPECT_TRUE(controller->window()->isVisible());
}

TEST_F(ScreenshotOverlayControllerTest, AHeldKeyIsPressedOnce) {
    controller->presentOverlay(newCapture());
    press(Qt::Key_Return);
    EXPECT_FALSE(press(Qt::Key_Return, KeyRepeat::repeated));
    EXPECT_EQ(log.withMessage(copyFailure).size(), 1u);
    EXPECT_FALSE(press(Qt::Key_Escape, KeyRepeat::repeated)) << "held since before the overlay came";
    EXPECT_TRUE(controller->window()->isVisible());
    typeIntoAnEditor();
    EXPECT_TRUE(press(Qt::Key_Return, KeyRepeat::repeated)) << "typing repeats";
}

TEST_F(ScreenshotOverlayControllerTest, UndoIsForTheWindowThatItIsTypedIn) {
    controller->presentOverlay(newCapture());
    select();
    widgetNamed<ToolbarIconButton>("Rectangle tool", controller->window()->contentView()->toolbar()).click();
    mouse(QEvent::MouseButtonPress, {30, 25}, Qt::LeftButton);
    mouse(QEvent::MouseMove, {80, 50}, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, {80, 50}, Qt::NoButton);
    const auto& drawn = controller->window()->contentView()->annotations().appliedList();
    ASSERT_EQ(drawn.size(), 1u);

    QLineEdit elsewhere;
    elsewhere.show();
    QTest::keyClicks(&elsewhere, "typed");
    for (QWindow* window : {elsewhere.windowHandle(), controller->window()->windowHandle()}) {
        EXPECT_EQ(drawn.size(), 1u);
        QTest::keyClick(window, Qt::Key_Z, Qt::ControlModifier);
    }
    EXPECT_TRUE(elsewhere.text().isEmpty());
    EXPECT_TRUE(drawn.empty());
}

} // namespace
} // namespace glimmerly

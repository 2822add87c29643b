#pragma once

#include "overlay/ScreenshotOverlayController.h"
#include "overlay/canvas/OverlayCanvasView.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/TestPictures.h"

#include <QApplication>
#include <QMouseEvent>
#include <gtest/gtest.h>

namespace glimmerly {

/// A controller on a desktop of fakes, and a user who selects.
class ControllerFixture : public testing::Test, protected FakeDesktop {
public:
    ~ControllerFixture() override {
        controller.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

protected:
    ControllerFixture() { screens = FakeScreens({FakeScreens::display(picture.size())}); }

    /// The file of a capture of the display.
    std::filesystem::path newCapture(const std::string& name = "glimmerly-capture-1.png") {
        const auto path = directory.path() / name;
        writePng(path, picture);
        return path;
    }
    void mouse(QEvent::Type type, QPointF at, Qt::MouseButtons buttons) {
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, at, button, buttons, Qt::NoModifier);
        QApplication::sendEvent(controller->window()->contentView(), &event);
    }
    /// Selects 100 x 50 points.
    void select() {
        mouse(QEvent::MouseButtonPress, {10, 11}, Qt::LeftButton);
        mouse(QEvent::MouseMove, {110, 61}, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, {110, 61}, Qt::NoButton);
    }
    std::unique_ptr<ScreenshotOverlayController> makeController(std::optional<std::string> bundleIdentifier) {
        return std::make_unique<ScreenshotOverlayController>(
            OverlayControllerServices{.screens = screens,
                                      .workspace = workspace,
                                      .overlayWindows = overlayWindows,
                                      .pasteboard = pasteboard,
                                      .savePanel = savePanel,
                                      .mainQueue = mainQueue,
                                      .notifications = notifications,
                                      .telemetry = telemetry,
                                      .bundleIdentifier = std::move(bundleIdentifier),
                                      .clock = [this] { return now; }});
    }

    Bitmap picture = noisePicture({320, 200});
    ScratchDirectory directory;
    LogCapture log;
    WallTime now{};
    std::unique_ptr<ScreenshotOverlayController> controller = makeController("app.glimmerly.Glimmerly");
};

} // namespace glimmerly

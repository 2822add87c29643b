#pragma once

#include "base/Overhang.h"
#include "overlay/canvas/OverlayCanvasView.h"
#include "tests/support/FakePasteboard.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/TestPictures.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>

#include <cmath>
#include <memory>

namespace glimmerly {

/// A canvas over a capture of one display, with a mouse that points at the display's own pixels.
class CanvasOnDisplay {
public:
    explicit CanvasOnDisplay(PixelSize displaySize, double displayScale = 1)
        : scale(displayScale), capture(noisePicture(displaySize)),
          screens({FakeScreens::display(displaySize, displayScale)}) {
        const auto file = directory.path() / "glimmerly-capture-1.png";
        writePng(file, capture);
        Rect frame = screens.all.front().frame;
        frame.height += 2;
        view = std::make_unique<OverlayCanvasView>(file, frame, OverlayCanvasServices{screens, pasteboard});
        view->resize(static_cast<int>(std::ceil(frame.width)), static_cast<int>(std::ceil(frame.height)));
        rowsAbove = overhang(frame.height, scale, displaySize.height).top;
    }

    void press(PixelPoint pixel) { send(QEvent::MouseButtonPress, pixel, Qt::LeftButton, Qt::LeftButton); }
    void drag(PixelPoint pixel) { send(QEvent::MouseMove, pixel, Qt::NoButton, Qt::LeftButton); }
    void release(PixelPoint pixel) { send(QEvent::MouseButtonRelease, pixel, Qt::LeftButton, Qt::NoButton); }
    void move(PixelPoint pixel) { send(QEvent::MouseMove, pixel, Qt::NoButton, Qt::NoButton); }
    void select(PixelPoint from, PixelPoint to) {
        press(from);
        drag(to);
        release(to);
    }
    void send(QEvent::Type type, PixelPoint pixel, Qt::MouseButton button, Qt::MouseButtons buttons) {
        const QPointF position(pixel.x / scale, (pixel.y + rowsAbove) / scale);
        QMouseEvent event(type, position, position, button, buttons, Qt::NoModifier);
        QApplication::sendEvent(view.get(), &event);
    }

    /// The whole canvas, drawn afresh, one pixel for each of the window's; with `DrawChildren` also the texts
    /// and the toolbar.
    [[nodiscard]] QImage rendered(QWidget::RenderFlags flags = QWidget::DrawWindowBackground) const {
        QImage image((QSizeF(view->size()) * scale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        view->render(&image, {}, {}, flags);
        image.setDevicePixelRatio(1);
        return image;
    }

    double scale;
    int rowsAbove = 0; ///< of the canvas, above the display's first
    Bitmap capture;
    FakeScreens screens;
    FakePasteboard pasteboard;
    ScratchDirectory directory;
    std::unique_ptr<OverlayCanvasView> view;
};

} // namespace glimmerly

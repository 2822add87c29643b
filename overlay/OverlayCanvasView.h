#pragma once

#include "overlay/OverlayCaptureBackingImage.h"
#include "overlay/SelectionScene.h"
#include "overlay/model/Selection.h"

#include <QImage>
#include <QWidget>

#include <filesystem>
#include <optional>

namespace glimmerly {

class Pasteboard;

/// What the canvas uses of the desktop.
struct OverlayCanvasServices {
    const Screens& screens;
    Pasteboard& pasteboard;
};

/// The one full-screen view of the overlay: draws the frozen capture with the selection over it and receives
/// every mouse event. Its own geometry is in points with the origin at the bottom-left, whatever whole size
/// the widget has; the widget must stand at the overlay window's top-left corner.
class OverlayCanvasView : public QWidget {
public:
    /// Shows the capture file at `captureImageURL` on a canvas of the size of `frame`, in points: the target
    /// screen's size, 2 points taller. A capture that cannot be read is logged and leaves the canvas black.
    OverlayCanvasView(std::filesystem::path captureImageURL, Rect frame, OverlayCanvasServices services,
                      QWidget* parent = nullptr);

    [[nodiscard]] Rect bounds() const { return bounds_; }
    /// As it stands, also while it is being drawn; may be smaller than what can be exported.
    [[nodiscard]] std::optional<Rect> selectionRect() const { return selection_.rect(); }

    /// The selected part of the capture at its full resolution; none without a selection of 2 × 2 points or
    /// without a capture.
    [[nodiscard]] std::optional<Bitmap> croppedSelectionImage() const;
    /// Puts that picture on the general pasteboard, one point a pixel. False when there is none or the
    /// pasteboard refuses it.
    [[nodiscard]] bool writeCroppedImageToPasteboard();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// What a drag does, chosen when the mouse goes down: the first of these whose test holds.
    enum class MouseMode { selectionResize, selectionCreation, nothing };

    void mouseDown(Point p);
    void mouseDragged(Point p);
    void mouseUp(Point p);
    void mouseMoved(Point p);
    [[nodiscard]] MouseMode beginMouseMode(Point p);
    [[nodiscard]] bool beginSelectionResize(Point p);

    void updatePositionTag(Point p);
    void updateCursor(Point p);
    void updateScene();

    void drawBackground(QPainter& painter) const;
    void drawScene(QPainter& painter) const;

    std::filesystem::path captureImageURL_;
    OverlayCanvasServices services_;
    Rect bounds_;
    OverlayCaptureBackingImage backing_;
    CanvasPixelGrid grid_;
    QImage background_; ///< over the expanded picture's pixels
    Selection selection_;
    MouseMode mouseMode_ = MouseMode::nothing;
    std::optional<Point> lastCrosshairLocationForPositionTag_;
    SelectionScene scene_; ///< what is on the screen, or will be after the repaint that was asked for
};

} // namespace glimmerly

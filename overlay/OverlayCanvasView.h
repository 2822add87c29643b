#pragma once

#include "base/Bitmap.h"
#include "base/Geometry.h"

#include <QWidget>

#include <filesystem>
#include <optional>

namespace glimmerly {

class Pasteboard;
class Screens;

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
    [[nodiscard]] std::optional<Rect> selectionRect() const { return selectionRect_; }

    /// The selected part of the capture at its full resolution; none without a selection of 2 × 2 points or
    /// without a capture.
    [[nodiscard]] std::optional<Bitmap> croppedSelectionImage() const;
    /// Puts that picture on the general pasteboard, one point a pixel. False when there is none or the
    /// pasteboard refuses it.
    [[nodiscard]] bool writeCroppedImageToPasteboard();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::filesystem::path captureImageURL_;
    OverlayCanvasServices services_;
    Rect bounds_;
    std::optional<Rect> selectionRect_;
};

} // namespace glimmerly

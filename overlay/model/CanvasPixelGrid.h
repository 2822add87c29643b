#pragma once

#include "base/Geometry.h"

#include <optional>

namespace glimmerly {

/// Where a picture of `pointSize` lies in `bounds`: at its own size, centred.
[[nodiscard]] Rect centredRect(Size pointSize, const Rect& bounds);

/// How the canvas's points lie on the overlay window's pixels. Pixels are counted from the window's top left;
/// the window is as wide as the display and reaches a few rows beyond it above and below, so that the picture
/// in it lies exactly over the live pixels.
class CanvasPixelGrid {
public:
    /// `bounds` is the canvas in points, `display` the display's size in pixels, `picture` that of the
    /// expanded capture, or none.
    CanvasPixelGrid(const Rect& bounds, double scale, PixelSize display, std::optional<PixelSize> picture);

    [[nodiscard]] double scale() const { return scale_; }
    [[nodiscard]] PixelSize window() const { return window_; }
    /// The display's own pixels.
    [[nodiscard]] PixelRect display() const { return display_; }
    /// Where the picture lies, its pixels on whole pixels of the window.
    [[nodiscard]] PixelRect picture() const { return picture_; }

    /// The top-left corner of `pixel`.
    [[nodiscard]] Point point(PixelPoint pixel) const;
    /// What a pointer at `pixel` points to: its top-left corner. On the display's last column or row it is
    /// the display's far edge, so that a drag can take in the last pixel; a pointer that has left the display
    /// counts as on its edge.
    [[nodiscard]] Point pointerPoint(PixelPoint pixel) const;
    /// The pixels covered by `rect`, each edge at the nearest pixel boundary.
    [[nodiscard]] PixelRect pixels(const Rect& rect) const;
    /// A length in whole pixels, at least one.
    [[nodiscard]] int pixels(double length) const;

private:
    double scale_;
    PixelSize window_;
    PixelRect display_;
    PixelRect picture_;
    Point topLeft_; ///< the window's top-left corner in canvas points
};

} // namespace glimmerly

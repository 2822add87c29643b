#pragma once

#include <QColor>
#include <QPainterPath>

namespace glimmerly {

struct UiColors;

/// How a segment of the recorder looks.
struct HotkeyRecorderButtonStyle {
    enum class Segment { leading, trailing };

    Segment segment = Segment::leading;
    bool isHighlighted = false; ///< looks pressed while it is not, and idle while it is

    /// `frame` with its two outer corners rounded by `radius`, in the frame's own unit.
    [[nodiscard]] QPainterPath shape(const QRectF& frame, double radius) const;
    [[nodiscard]] QColor fill(const UiColors& colors, bool isPressed) const;
};

} // namespace glimmerly

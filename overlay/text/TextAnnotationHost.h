#pragma once

#include "base/Geometry.h"

#include <QRect>

namespace glimmerly {

class OverlayTextView;

/// What a text annotation's views ask of the canvas they stand on.
class TextAnnotationHost {
public:
    virtual ~TextAnnotationHost() = default;

    /// The whole-point widget rectangle that shows `frame`, canvas points.
    [[nodiscard]] virtual QRect widgetGeometry(const Rect& frame) const = 0;
    /// Leaves at most `focused` with a highlighted selection; nullptr leaves none.
    virtual void collapseOtherTextSelections(const OverlayTextView* focused) = 0;
};

} // namespace glimmerly

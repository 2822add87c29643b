#pragma once

#include "base/Geometry.h"
#include "overlay/model/SelectionHandle.h"

#include <optional>

namespace glimmerly {

/// The selection rectangle and the drag that draws or resizes it; all in canvas points.
class Selection {
public:
    /// As it was built; may be smaller than what is kept while the mouse is down.
    [[nodiscard]] const std::optional<Rect>& rect() const { return selectionRect_; }
    /// What is to be seen of it: standardised, none unless it has a positive size.
    [[nodiscard]] std::optional<Rect> visibleRect() const;
    /// The completed selection, standardised: none while it is being drawn or resized and while it is too
    /// small. Annotations live inside it, the toolbar stands beside it.
    [[nodiscard]] std::optional<Rect> toolbarAnchorRect() const;
    /// The handle within reach of `point`.
    [[nodiscard]] std::optional<SelectionHandle> handleAt(Point point) const;

    /// A mouse-down forgets whatever drag was before it; exactly one of the begin functions may follow.
    void clearDrag();
    void beginResize(SelectionHandle handle);
    /// An existing selection stays until the first drag.
    void beginCreation(Point anchor);
    /// From the anchor to `point`, wherever that is.
    void dragCreation(Point point);
    void dragResize(Point point, const Rect& bounds);
    void endDrag();
    /// Drops a selection that is too small to be kept.
    void discardIfTooSmall();

private:
    std::optional<Rect> selectionRect_;
    std::optional<Point> selectionRectCreationAnchor_;
    std::optional<Rect> selectionRectResizeStartRect_;
    std::optional<SelectionHandle> selectionRectResizeActiveHandle_;
};

} // namespace glimmerly

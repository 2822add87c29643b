#include "overlay/model/Selection.h"

#include "overlay/model/RectResizing.h"
#include "overlay/model/SelectionStyle.h"

namespace glimmerly {

std::optional<Rect> Selection::visibleRect() const {
    if (!selectionRect_ || selectionRect_->isEmpty())
        return std::nullopt;
    return selectionRect_->standardized();
}

std::optional<Rect> Selection::toolbarAnchorRect() const {
    const bool dragging = selectionRectCreationAnchor_ || selectionRectResizeActiveHandle_;
    if (!selectionRect_ || dragging || isSmallerThan(*selectionRect_, selectionStyle.selectionRectMinSize))
        return std::nullopt;
    return selectionRect_->standardized();
}

std::optional<SelectionHandle> Selection::handleAt(Point point) const {
    if (!selectionRect_)
        return std::nullopt;
    return hitTestSelectionHandle(point, *selectionRect_, selectionStyle.selectionRectResizeHandleHitRadius);
}

void Selection::clearDrag() {
    selectionRectCreationAnchor_.reset();
    selectionRectResizeStartRect_.reset();
    selectionRectResizeActiveHandle_.reset();
}

void Selection::beginResize(SelectionHandle handle) {
    if (!selectionRect_)
        return;
    selectionRectResizeActiveHandle_ = handle;
    selectionRectResizeStartRect_ = selectionRect_->standardized();
}

void Selection::beginCreation(Point anchor) {
    selectionRectCreationAnchor_ = anchor;
}

void Selection::dragCreation(Point point) {
    if (selectionRectCreationAnchor_)
        selectionRect_ = Rect::fromCorners(*selectionRectCreationAnchor_, point);
}

void Selection::dragResize(Point point, const Rect& bounds) {
    if (selectionRectResizeActiveHandle_ && selectionRectResizeStartRect_)
        selectionRect_ = resizedRect(*selectionRectResizeStartRect_, *selectionRectResizeActiveHandle_, point,
                                     bounds, selectionStyle.selectionRectMinSize);
}

void Selection::endDrag() {
    selectionRectCreationAnchor_.reset();
    selectionRectResizeActiveHandle_.reset();
}

void Selection::discardIfTooSmall() {
    if (selectionRect_ && isSmallerThan(*selectionRect_, selectionStyle.selectionRectMinSize))
        selectionRect_.reset();
}

} // namespace glimmerly

// The canvas's mouse: what each event does, in the order in which it does it.

#include "overlay/canvas/OverlayCanvasView.h"
#include "overlay/canvas/SelectionCursors.h"
#include "overlay/drawing/CanvasCoordinates.h"
#include "overlay/text/OverlayGrowingTextAnnotationView.h"
#include "overlay/toolbar/OverlayToolbarView.h"

#include <QEnterEvent>
#include <QMouseEvent>

namespace glimmerly {

void OverlayCanvasView::mouseDown(Point p) {
    selection_.clearDrag();
    mouseMode_ = beginMouseMode(p);
    const bool mayMoveToolbar = mouseMode_ == MouseMode::selectionResize ||
                                mouseMode_ == MouseMode::drawing || mouseMode_ == MouseMode::textCreation ||
                                mouseMode_ == MouseMode::selectionCreation;
    if (mayMoveToolbar)
        layoutToolbar();
    updatePositionTag(p);
    updateScene();
}

OverlayCanvasView::MouseMode OverlayCanvasView::beginMouseMode(Point p) {
    if (isOverToolbar(p)) {
        endTextEditing();
        return MouseMode::toolbar;
    }
    if (const auto text = textViews_.topmostTextAnnotationAt(p, annotations_.appliedList())) {
        textMouseDown(*text, p);
        return MouseMode::textAnnotation;
    }
    if (beginSelectionResize(p))
        return MouseMode::selectionResize;
    if (beginAnnotationInteraction(p))
        return MouseMode::annotationInteraction;
    if (const auto drawing = beginDrawing(p))
        return *drawing;
    if (mayDrawNewSelection()) {
        selection_.beginCreation(p);
        return MouseMode::selectionCreation;
    }
    return MouseMode::nothing;
}

bool OverlayCanvasView::beginSelectionResize(Point p) {
    const auto handle = selection_.handleAt(p);
    if (!handle)
        return false;
    endTextEditing();
    clearAnnotationSelection();
    selection_.beginResize(*handle);
    return true;
}

bool OverlayCanvasView::beginAnnotationInteraction(Point p) {
    const auto hit = annotationHitAt(p);
    if (!hit)
        return false;
    setFocus();
    annotations_.beginInteraction(*hit, p);
    selectionOfAnnotationsChanged();
    return true;
}

std::optional<OverlayCanvasView::MouseMode> OverlayCanvasView::beginDrawing(Point p) {
    if (!toolbarSelectedTool_ || !toolbarSelectedColor_ || !isInsideCompletedSelection(p))
        return std::nullopt;
    clearAnnotationSelection();
    const Color color = toolbarSelectedColor_->color;
    if (*toolbarSelectedTool_ == SelectionTool::text) {
        addAnnotation({Uuid::generate(), TextLabel{p, {}}, color}, TextAnnotationViews::Focus::take);
        return MouseMode::textCreation;
    }
    annotations_.beginDraft({Uuid::generate(), *toolbarSelectedTool_, color, p, p});
    return MouseMode::drawing;
}

bool OverlayCanvasView::isOverToolbar(Point p) const {
    return toolbarView_ && !toolbarView_->isHidden() && toolbarFrame_.contains(p);
}

bool OverlayCanvasView::mayDrawNewSelection() const {
    return annotations_.appliedList().empty() && !toolbarSelectedTool_ && !toolbarSelectedColor_;
}

void OverlayCanvasView::mouseDragged(Point p) {
    switch (mouseMode_) {
    case MouseMode::textAnnotation:
        textMouseDragged(p);
        break;
    case MouseMode::selectionResize:
        selection_.dragResize(p, bounds_);
        layoutToolbar();
        break;
    case MouseMode::annotationInteraction:
        dragAnnotation(p);
        break;
    case MouseMode::drawing:
        annotations_.dragDraft(p);
        break;
    case MouseMode::selectionCreation:
        selection_.dragCreation(p);
        layoutToolbar();
        break;
    case MouseMode::toolbar:
    case MouseMode::textCreation:
    case MouseMode::nothing:
        break;
    }
    updateCursor(p);
    updatePositionTag(p);
    updateScene();
}

void OverlayCanvasView::mouseUp(Point p) {
    selection_.endDrag();
    if (mouseMode_ == MouseMode::textAnnotation) {
        textMouseUp();
        layoutToolbar();
    } else if (mouseMode_ == MouseMode::annotationInteraction) {
        annotations_.endInteraction();
    } else {
        selection_.discardIfTooSmall();
        annotations_.commitDraft();
        layoutToolbar();
    }
    mouseMode_ = MouseMode::nothing;
    updateCursor(p);
    updatePositionTag(p);
    updateScene();
}

void OverlayCanvasView::mouseMoved(Point p) {
    updatePositionTag(p);
    updateCursor(p);
    updateScene();
}

void OverlayCanvasView::updatePositionTag(Point p) {
    if (selection_.rect())
        lastCrosshairLocationForPositionTag_.reset();
    else
        lastCrosshairLocationForPositionTag_ = p;
}

void OverlayCanvasView::updateCursor(Point p) {
    const auto shape = cursorShapeAt(p);
    if (shape && cursor().shape() != *shape)
        setCursor(*shape);
}

std::optional<Qt::CursorShape> OverlayCanvasView::cursorShapeAt(Point p) const {
    if (isOverToolbar(p))
        return std::nullopt; // the toolbar has its own
    if (const auto handle = selection_.handleAt(p))
        return cursorForSelectionHandle(*handle);
    if (const auto hit = annotationHitAt(p))
        return cursorForHit(*hit);
    const bool mayDraw = isInsideCompletedSelection(p) && toolbarSelectedTool_ && toolbarSelectedColor_;
    return mayDraw || mayDrawNewSelection() ? Qt::CrossCursor : Qt::ArrowCursor;
}

Qt::CursorShape OverlayCanvasView::cursorForHit(const AnnotationHit& hit) const {
    if (const auto* resize = std::get_if<ResizeHit>(&hit)) {
        const auto* rectangle = std::get_if<RectangleHandle>(&resize->handle);
        return rectangle ? cursorForSelectionHandle(rectangle->handle) : Qt::OpenHandCursor;
    }
    const auto* view = textViews_.view(std::get<MoveHit>(hit).id);
    return view && view->isEditing() ? Qt::IBeamCursor : Qt::OpenHandCursor;
}

void OverlayCanvasView::mousePressEvent(QMouseEvent* event) {
    setFocus(Qt::MouseFocusReason);
    if (event->button() == Qt::LeftButton)
        mouseDown(canvasPoint(*event, grid_));
}

void OverlayCanvasView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton)
        mouseDragged(canvasPoint(*event, grid_));
    else if (event->buttons() == Qt::NoButton)
        mouseMoved(canvasPoint(*event, grid_));
}

void OverlayCanvasView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        mouseUp(canvasPoint(*event, grid_));
}

void OverlayCanvasView::enterEvent(QEnterEvent* event) {
    mouseMoved(canvasPoint(*event, grid_));
}

void OverlayCanvasView::leaveEvent(QEvent*) {
    lastCrosshairLocationForPositionTag_.reset();
    updateScene();
}

} // namespace glimmerly

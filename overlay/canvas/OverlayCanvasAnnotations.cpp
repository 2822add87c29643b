// The canvas's annotations: the changes to them, and the texts' views that must follow.

#include "overlay/canvas/OverlayCanvasView.h"
#include "overlay/model/AnnotationHitTest.h"
#include "overlay/model/ArrowGeometry.h"
#include "overlay/text/OverlayGrowingTextAnnotationView.h"
#include "overlay/text/OverlayTextView.h"
#include "overlay/toolbar/OverlayToolbarView.h"

#include <utility>

namespace glimmerly {

namespace {
/// How far, in points, the pointer may travel on a text before a click is a drag.
constexpr double textAnnotationDragThreshold = 5;
} // namespace

void OverlayCanvasView::connectTextViews() {
    textViews_.onEditingEnded = [this](const Uuid& id) { finishTextEditing(id); };
    textViews_.onTextChanged = [this](const Uuid& id, const std::string& text) {
        updateAnnotationText(id, text);
    };
}

void OverlayCanvasView::addAnnotation(const OverlayAnnotation& annotation, TextAnnotationViews::Focus focus) {
    annotations_.addAnnotation(annotation);
    if (std::holds_alternative<TextLabel>(annotation.kind))
        textViews_.ensureTextView(annotation, focus);
    annotationListChanged();
}

void OverlayCanvasView::selectAnnotation(const Uuid& id) {
    annotations_.selectAnnotation(id);
    selectionOfAnnotationsChanged();
}

void OverlayCanvasView::clearAnnotationSelection() {
    annotations_.clearAnnotationSelection();
    textViews_.updateTextSelectionFlags(std::nullopt);
    updateScene();
}

void OverlayCanvasView::selectionOfAnnotationsChanged() {
    const OverlayAnnotation* selected = annotations_.selected();
    if (!selected)
        return;
    const bool isText = std::holds_alternative<TextLabel>(selected->kind);
    syncToolbarToAnnotation(*selected);
    textViews_.updateTextSelectionFlags(annotations_.selectedID());
    if (isText)
        endTextEditing();
    updateScene();
}

void OverlayCanvasView::recolorSelectedAnnotation(const Color& color) {
    if (annotations_.recolorSelectedAnnotation(color) == AnnotationEditor::Change::made)
        annotationListChanged();
}

bool OverlayCanvasView::performUndo() {
    if (!annotations_.performUndo())
        return false;
    annotationListChanged();
    return true;
}

bool OverlayCanvasView::performRedo() {
    if (!annotations_.performRedo())
        return false;
    annotationListChanged();
    return true;
}

void OverlayCanvasView::annotationListChanged() {
    const auto& list = annotations_.appliedList();
    textViews_.syncTextViews(list);
    textViews_.restackTextViews(list, toolbarView_);
    textViews_.updateTextSelectionFlags(annotations_.selectedID());
    updateScene();
}

void OverlayCanvasView::finishTextEditing(const Uuid& id) {
    if (annotations_.removeIfEmptyText(id) == AnnotationEditor::Change::made)
        annotationListChanged();
}

void OverlayCanvasView::updateAnnotationText(const Uuid& id, const std::string& text) {
    annotations_.updateAnnotationText(id, text);
    textViews_.clipTextViewsToSelection(selection_.visibleRect()); // the view has grown
}

std::optional<AnnotationHit> OverlayCanvasView::annotationHitAt(Point p) const {
    if (!isInsideCompletedSelection(p))
        return std::nullopt;
    return hitTestAnnotation(p, annotations_.appliedList(), [this](Point point, const Uuid& id) {
        return textViews_.textAnnotationContains(point, id);
    });
}

bool OverlayCanvasView::isInsideCompletedSelection(Point p) const {
    const auto completed = selection_.toolbarAnchorRect();
    return completed && completed->contains(p);
}

void OverlayCanvasView::dragAnnotation(Point p) {
    annotations_.dragInteraction(p, bounds_);
    const OverlayAnnotation* selected = annotations_.selected();
    if (selected && std::holds_alternative<TextLabel>(selected->kind))
        textViews_.ensureTextView(*selected, TextAnnotationViews::Focus::leave);
}

// Clicks and drags on a text

void OverlayCanvasView::textMouseDown(const Uuid& id, Point p) {
    const auto* edited = textViews_.editedView();
    if (edited && edited->annotationID() != id)
        endTextEditing();
    pendingTextWasAlreadySelectedAtMouseDown_ = annotations_.selectedID() == id;
    pendingTextDragAnnotationID_ = id;
    pendingTextDragStart_ = p;
    updateCursor(p);
}

void OverlayCanvasView::textMouseDragged(Point p) {
    if (!pendingTextDragStart_ || !pendingTextDragAnnotationID_ ||
        !annotations_.find(*pendingTextDragAnnotationID_))
        return;
    if (!annotations_.isInteracting()) {
        if (distance(*pendingTextDragStart_, p) <= textAnnotationDragThreshold)
            return;
        annotations_.beginInteraction(MoveHit{*pendingTextDragAnnotationID_}, *pendingTextDragStart_);
        selectionOfAnnotationsChanged();
    }
    dragAnnotation(p);
}

void OverlayCanvasView::textMouseUp() {
    if (annotations_.isInteracting())
        annotations_.endInteraction();
    else if (pendingTextDragAnnotationID_ && textViews_.view(*pendingTextDragAnnotationID_))
        clickText(*pendingTextDragAnnotationID_);
    pendingTextDragAnnotationID_.reset();
    pendingTextDragStart_.reset();
    pendingTextWasAlreadySelectedAtMouseDown_ = false;
}

void OverlayCanvasView::clickText(const Uuid& id) {
    if (!pendingTextWasAlreadySelectedAtMouseDown_) {
        selectAnnotation(id);
        return;
    }
    textViews_.view(id)->textView().becomeFirstResponder();
    clearAnnotationSelection();
}

} // namespace glimmerly

// The canvas's toolbar: where it stands and what its buttons do.

#include "overlay/canvas/OverlayCanvasView.h"
#include "overlay/toolbar/OverlayToolbarView.h"

#include <algorithm>

namespace glimmerly {

namespace {

const AnnotationColorOption* paletteOption(const Color& color) {
    const auto found = std::ranges::find(annotationPalette, color, &AnnotationColorOption::color);
    return found == annotationPalette.end() ? nullptr : &*found;
}

void call(const std::function<void()>& handler) {
    if (handler)
        handler();
}

} // namespace

void OverlayCanvasView::installToolbar() {
    toolbarView_ = new OverlayToolbarView(this);
    toolbarView_->adjustSize();
    toolbarView_->hide();
    toolbarFrame_ = {0, -1000, static_cast<double>(toolbarView_->width()),
                     static_cast<double>(toolbarView_->height())};
    toolbarView_->onHandleDragStateChanged = [this](bool) { endTextEditing(); };
    toolbarView_->onHandleDragDelta = [this](double dx, double dy) {
        endTextEditing();
        moveToolbarBy(dx, dy);
    };
    toolbarView_->onToolChanged = [this](std::optional<SelectionTool> tool) {
        endTextEditing();
        toolbarSelectedTool_ = tool;
    };
    toolbarView_->onColorChanged = [this](const std::optional<AnnotationColorOption>& option) {
        toolbarColorChanged(option);
    };
    toolbarView_->onUndoTapped = [this] {
        endTextEditing();
        performUndo();
    };
    toolbarView_->onRedoTapped = [this] {
        endTextEditing();
        performRedo();
    };
    toolbarView_->onCloseTapped = [this] {
        endTextEditing();
        call(onClose);
    };
    toolbarView_->onDownloadTapped = [this] {
        endTextEditing();
        call(onDownload);
    };
    toolbarView_->onDoneTapped = [this] {
        endTextEditing();
        call(onDone);
    };
}

void OverlayCanvasView::layoutToolbar() {
    if (!toolbarView_)
        return;
    const auto origin =
        toolbarLayout_.layoutToolbar(toolbarFrame_.size(), selection_.toolbarAnchorRect(), bounds_);
    if (origin)
        placeToolbar(*origin);
    toolbarView_->setVisible(origin.has_value());
}

void OverlayCanvasView::moveToolbarBy(double dx, double dy) {
    placeToolbar(toolbarLayout_.moveToolbarBy(dx, dy, toolbarFrame_, bounds_));
}

void OverlayCanvasView::placeToolbar(Point origin) {
    toolbarFrame_.x = origin.x;
    toolbarFrame_.y = origin.y;
    toolbarView_->move(widgetRect(toolbarFrame_).topLeft());
}

void OverlayCanvasView::syncToolbarToAnnotation(const OverlayAnnotation& annotation) {
    const AnnotationColorOption* option = paletteOption(annotation.color);
    toolbarView_->setSelectedTool(toolFor(annotation.kind));
    toolbarView_->setSelectedColor(option ? std::optional(option->id) : std::nullopt);
}

void OverlayCanvasView::toolbarColorChanged(const std::optional<AnnotationColorOption>& option) {
    endTextEditing();
    toolbarSelectedColor_ = option;
    const OverlayAnnotation* selected = annotations_.selected();
    if (!selected)
        return;
    if (option) {
        recolorSelectedAnnotation(option->color);
        return;
    }
    const OverlayAnnotation annotation = *selected; // lighting its colour comes back to this very handler
    syncToolbarToAnnotation(annotation);
    const AnnotationColorOption* own = paletteOption(annotation.color);
    toolbarSelectedColor_ = own ? std::optional(*own) : std::nullopt;
}

} // namespace glimmerly

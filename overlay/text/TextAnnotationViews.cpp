#include "overlay/text/TextAnnotationViews.h"

#include "overlay/drawing/QtColor.h"
#include "overlay/text/OverlayGrowingTextAnnotationView.h"
#include "overlay/text/OverlayTextView.h"
#include "ui/QtConversions.h"

#include <QFontDatabase>

#include <algorithm>
#include <ranges>
#include <vector>

namespace glimmerly {

namespace {

constexpr int textSize = 20; // points

const TextLabel& labelOf(const OverlayAnnotation& annotation) {
    return std::get<TextLabel>(annotation.kind);
}

bool isText(const OverlayAnnotation& annotation) {
    return std::holds_alternative<TextLabel>(annotation.kind);
}

} // namespace

TextAnnotationViews::TextAnnotationViews(QWidget& canvas, Place place)
    : canvas_(canvas), place_(std::move(place)),
      font_(QFontDatabase::systemFont(QFontDatabase::GeneralFont)) {
    font_.setPixelSize(textSize);
}

TextAnnotationViews::~TextAnnotationViews() {
    for (auto* view : std::views::values(views_)) {
        view->onTextChanged = nullptr; // the canvas may be half gone when the editors are
        view->onFocusChanged = nullptr;
        view->textView().resignFirstResponder(); // or it would when it is half gone itself
    }
    for (auto* view : std::views::values(views_))
        delete view;
}

void TextAnnotationViews::ensureTextView(const OverlayAnnotation& annotation, Focus focus) {
    auto* view = this->view(annotation.id);
    if (!view) {
        view = &makeView(annotation);
    } else {
        view->setString(toQString(labelOf(annotation).text));
        view->setAnchorInCanvas(labelOf(annotation).anchor);
        view->setAnnotationColor(toQColor(annotation.color));
    }
    clip(*view);
    if (focus == Focus::take)
        view->textView().becomeFirstResponder();
}

OverlayGrowingTextAnnotationView& TextAnnotationViews::makeView(const OverlayAnnotation& annotation) {
    const Uuid id = annotation.id;
    auto* view =
        new OverlayGrowingTextAnnotationView(labelOf(annotation).anchor, id, toQColor(annotation.color),
                                             font_, toQString(labelOf(annotation).text), *this, &canvas_);
    view->onFocusChanged = [this, id](bool focused) {
        if (!focused && onEditingEnded)
            onEditingEnded(id);
    };
    view->onTextChanged = [this, id](const QString& text) {
        if (onTextChanged)
            onTextChanged(id, text.toStdString());
    };
    views_.emplace(id, view);
    return *view;
}

void TextAnnotationViews::syncTextViews(std::span<const OverlayAnnotation> list) {
    std::vector<Uuid> gone;
    for (const Uuid& id : std::views::keys(views_)) {
        const auto isIt = [&](const OverlayAnnotation& each) { return each.id == id && isText(each); };
        if (std::ranges::none_of(list, isIt))
            gone.push_back(id);
    }
    for (const Uuid& id : gone)
        removeTextView(id);
    for (const auto& annotation : list | std::views::filter(isText))
        ensureTextView(annotation, Focus::leave);
}

void TextAnnotationViews::removeTextView(const Uuid& id) {
    const auto found = views_.find(id);
    if (found == views_.end())
        return;
    auto* view = found->second;
    views_.erase(found);
    view->onTextChanged = nullptr;
    view->onFocusChanged = nullptr;
    if (view->textView().isFirstResponder())
        canvas_.setFocus(Qt::OtherFocusReason);
    view->hide();
    view->deleteLater(); // it may be the editor that has just lost the focus that asks for this
}

void TextAnnotationViews::updateTextSelectionFlags(const std::optional<Uuid>& selectedID) {
    for (const auto& [id, view] : views_)
        view->setCanvasSelected(selectedID == id);
}

void TextAnnotationViews::clipTextViewsToSelection(const std::optional<Rect>& selection) {
    selection_ = selection;
    for (auto* view : std::views::values(views_))
        clip(*view);
}

void TextAnnotationViews::clip(OverlayGrowingTextAnnotationView& view) const {
    const Rect part = selection_ ? view.frameInCanvas().intersected(*selection_) : Rect{};
    view.setVisiblePart(part.isEmpty() ? std::nullopt : std::optional(part));
}

void TextAnnotationViews::restackTextViews(std::span<const OverlayAnnotation> list, QWidget* front) const {
    for (const auto& annotation : list | std::views::filter(isText)) {
        if (auto* view = this->view(annotation.id))
            view->raise();
    }
    if (front)
        front->raise();
}

bool TextAnnotationViews::textAnnotationContains(Point point, const Uuid& id) const {
    const auto* found = view(id);
    if (!found || found->isHidden())
        return false;
    const Rect& frame = found->frameInCanvas();
    if (!selection_)
        return frame.contains(point);
    const Rect visible = frame.intersected(*selection_);
    if (!visible.isEmpty())
        return visible.contains(point);
    return selection_->contains(found->anchorInCanvas()) && frame.contains(point);
}

std::optional<Uuid>
TextAnnotationViews::topmostTextAnnotationAt(Point point, std::span<const OverlayAnnotation> list) const {
    for (const auto& annotation : list | std::views::reverse | std::views::filter(isText)) {
        if (textAnnotationContains(point, annotation.id))
            return annotation.id;
    }
    return std::nullopt;
}

OverlayGrowingTextAnnotationView* TextAnnotationViews::view(const Uuid& id) const {
    const auto found = views_.find(id);
    return found == views_.end() ? nullptr : found->second;
}

OverlayGrowingTextAnnotationView* TextAnnotationViews::editedView() const {
    const auto editing =
        std::ranges::find_if(std::views::values(views_), [](const auto* view) { return view->isEditing(); });
    return editing == std::views::values(views_).end() ? nullptr : *editing;
}

void TextAnnotationViews::endTextEditing() {
    auto* view = editedView();
    if (!view)
        return;
    OverlayTextView& editor = view->textView();
    canvas_.setFocus(Qt::OtherFocusReason);
    editor.resignFirstResponder(); // also when the window has not the keyboard and no focus event comes
}

void TextAnnotationViews::collapseOtherTextSelections(const OverlayTextView* focused) {
    for (auto* view : std::views::values(views_)) {
        if (&view->textView() != focused)
            view->textView().collapseSelection();
    }
}

} // namespace glimmerly

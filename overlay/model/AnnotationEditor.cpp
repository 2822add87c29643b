#include "overlay/model/AnnotationEditor.h"

#include "base/Overloaded.h"
#include "overlay/model/AnnotationEditing.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <string>
#include <utility>

namespace glimmerly {

bool isBlank(std::string_view text) {
    // Unicode's white space outside ASCII, as UTF-8; the zero-width space belongs to them for a user.
    static constexpr auto wide = std::to_array<std::string_view>(
        {"\u0085", "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006",
         "\u2007", "\u2008", "\u2009", "\u200A", "\u200B", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"});
    while (!text.empty()) {
        if (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r')) {
            text.remove_prefix(1);
            continue;
        }
        const auto space = std::ranges::find_if(wide, [&](auto each) { return text.starts_with(each); });
        if (space == wide.end())
            return false;
        text.remove_prefix(space->size());
    }
    return true;
}

const OverlayAnnotation* AnnotationEditor::find(const Uuid& id) const {
    const auto found = std::ranges::find(annotationAppliedList_, id, &OverlayAnnotation::id);
    return found == annotationAppliedList_.end() ? nullptr : &*found;
}

OverlayAnnotation* AnnotationEditor::findMutable(const Uuid& id) {
    return const_cast<OverlayAnnotation*>(std::as_const(*this).find(id));
}

const OverlayAnnotation* AnnotationEditor::selected() const {
    return annotationActiveSelectionID_ ? find(*annotationActiveSelectionID_) : nullptr;
}

void AnnotationEditor::beginDraft(DraftShapeAnnotation draft) {
    annotationActiveDraftShape_ = draft;
}

void AnnotationEditor::dragDraft(Point point) {
    if (annotationActiveDraftShape_)
        annotationActiveDraftShape_->current = point;
}

void AnnotationEditor::commitDraft() {
    const auto draft = std::exchange(annotationActiveDraftShape_, std::nullopt);
    if (!draft)
        return;
    if (auto annotation = annotationFromDraft(*draft))
        addAnnotation(std::move(*annotation));
}

void AnnotationEditor::addAnnotation(OverlayAnnotation annotation) {
    annotationAppliedList_.push_back(annotation);
    record(AddAction{std::move(annotation)});
}

void AnnotationEditor::record(AnnotationUndoAction action) {
    annotationUndoStack_.push_back(std::move(action));
    annotationRedoStack_.clear();
}

void AnnotationEditor::selectAnnotation(const Uuid& id) {
    if (find(id))
        annotationActiveSelectionID_ = id;
}

void AnnotationEditor::clearAnnotationSelection() {
    annotationActiveSelectionID_.reset();
}

void AnnotationEditor::beginInteraction(const AnnotationHit& hit, Point point) {
    const Uuid id = std::visit([](const auto& any) { return any.id; }, hit);
    const OverlayAnnotation* annotation = find(id);
    if (!annotation)
        return;
    selectAnnotation(id);
    annotationActiveSelectionBeforeEdit_ = *annotation;
    annotationActiveSelectionResizeStartRect_.reset();
    if (const auto* resize = std::get_if<ResizeHit>(&hit)) {
        annotationActiveSelectionInteraction_ = ResizeInteraction{resize->handle};
        if (const auto* rectangle = std::get_if<RectangleShape>(&annotation->kind))
            annotationActiveSelectionResizeStartRect_ = rectangle->rect.standardized();
    } else {
        annotationActiveSelectionInteraction_ = MoveInteraction{point};
    }
}

void AnnotationEditor::dragInteraction(Point point, const Rect& bounds) {
    if (!annotationActiveSelectionInteraction_ || !annotationActiveSelectionID_)
        return;
    OverlayAnnotation* annotation = findMutable(*annotationActiveSelectionID_);
    if (!annotation)
        return;
    if (auto* move = std::get_if<MoveInteraction>(&*annotationActiveSelectionInteraction_)) {
        annotation->kind = movedKind(annotation->kind, point - move->lastViewPoint);
        move->lastViewPoint = point;
        return;
    }
    const auto& handle = std::get<ResizeInteraction>(*annotationActiveSelectionInteraction_).handle;
    if (auto kind =
            resizedKind(annotation->kind, handle, point, annotationActiveSelectionResizeStartRect_, bounds))
        annotation->kind = std::move(*kind);
}

void AnnotationEditor::endInteraction() {
    commitActiveEdit();
    annotationActiveSelectionInteraction_.reset();
    annotationActiveSelectionBeforeEdit_.reset();
    annotationActiveSelectionResizeStartRect_.reset();
}

void AnnotationEditor::commitActiveEdit() {
    if (!annotationActiveSelectionBeforeEdit_)
        return;
    const OverlayAnnotation* current = find(annotationActiveSelectionBeforeEdit_->id);
    if (!current)
        return;
    if (auto action = makeEditAction(*annotationActiveSelectionBeforeEdit_, *current))
        record(std::move(*action));
}

AnnotationEditor::Change AnnotationEditor::recolorSelectedAnnotation(const Color& color) {
    const OverlayAnnotation* before = selected();
    if (!before || before->color == color)
        return Change::none;
    OverlayAnnotation recolored = *before;
    recolored.color = color;
    record(EditAction{*before, recolored});
    replace(recolored);
    return Change::made;
}

void AnnotationEditor::updateAnnotationText(const Uuid& id, std::string_view text) {
    OverlayAnnotation* annotation = findMutable(id);
    auto* label = annotation ? std::get_if<TextLabel>(&annotation->kind) : nullptr;
    if (!label)
        return;
    label->text = text;
    refreshHistoryText(*annotation);
}

void AnnotationEditor::refreshHistoryText(const OverlayAnnotation& updated) {
    const auto refresh = Overloaded{
        [&](AddAction& add) {
            if (add.annotation.id == updated.id)
                add.annotation = updated;
        },
        [&](RemoveAction& remove) {
            if (remove.annotation.id == updated.id)
                remove.annotation = updated;
        },
        [&](EditAction& edit) {
            if (edit.newAnnotation.id == updated.id)
                edit.newAnnotation = updated;
        },
    };
    for (auto* stack : {&annotationUndoStack_, &annotationRedoStack_}) {
        for (auto& action : *stack)
            std::visit(refresh, action);
    }
}

AnnotationEditor::Change AnnotationEditor::removeIfEmptyText(const Uuid& id) {
    const OverlayAnnotation* annotation = find(id);
    const auto* label = annotation ? std::get_if<TextLabel>(&annotation->kind) : nullptr;
    if (!label || !isBlank(label->text))
        return Change::none;
    erase(id);
    if (annotationActiveSelectionID_ == id)
        annotationActiveSelectionID_.reset();
    const auto isItsAdd = [&](const AnnotationUndoAction& action) {
        const auto* add = std::get_if<AddAction>(&action);
        return add && add->annotation.id == id;
    };
    const auto newestFirst = annotationUndoStack_ | std::views::reverse;
    const auto newest = std::ranges::find_if(newestFirst, isItsAdd);
    if (newest != newestFirst.end())
        annotationUndoStack_.erase(std::next(newest).base());
    return Change::made;
}

bool AnnotationEditor::performUndo() {
    return transferAction(annotationUndoStack_, annotationRedoStack_, Direction::undo);
}

bool AnnotationEditor::performRedo() {
    return transferAction(annotationRedoStack_, annotationUndoStack_, Direction::redo);
}

bool AnnotationEditor::transferAction(std::vector<AnnotationUndoAction>& source,
                                      std::vector<AnnotationUndoAction>& target, Direction direction) {
    if (source.empty())
        return false;
    AnnotationUndoAction action = std::move(source.back());
    source.pop_back();
    applyAction(action, direction);
    target.push_back(std::move(action));
    return true;
}

void AnnotationEditor::applyAction(const AnnotationUndoAction& action, Direction direction) {
    const bool isUndo = direction == Direction::undo;
    std::visit(Overloaded{
                   [&](const AddAction& add) {
                       if (isUndo)
                           erase(add.annotation.id);
                       else
                           insert(add.annotation, annotationAppliedList_.size());
                   },
                   [&](const RemoveAction& remove) {
                       if (isUndo)
                           insert(remove.annotation, remove.index);
                       else
                           erase(remove.annotation.id);
                   },
                   [&](const EditAction& edit) { replace(isUndo ? edit.oldAnnotation : edit.newAnnotation); },
               },
               action);
}

void AnnotationEditor::insert(const OverlayAnnotation& annotation, std::size_t index) {
    const auto place = std::min(index, annotationAppliedList_.size());
    annotationAppliedList_.insert(annotationAppliedList_.begin() + static_cast<std::ptrdiff_t>(place),
                                  annotation);
}

void AnnotationEditor::erase(const Uuid& id) {
    std::erase_if(annotationAppliedList_, [&](const OverlayAnnotation& each) { return each.id == id; });
}

void AnnotationEditor::replace(const OverlayAnnotation& annotation) {
    if (OverlayAnnotation* found = findMutable(annotation.id))
        *found = annotation;
}

} // namespace glimmerly

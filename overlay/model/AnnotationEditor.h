#pragma once

#include "overlay/model/OverlayAnnotation.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace glimmerly {

/// The annotations of one overlay, which one is selected, what the mouse is doing to them, and the history of
/// changes. Pure state: the canvas draws it and keeps the text views in step with it.
class AnnotationEditor {
public:
    /// All annotations; the order is the stacking order, the first at the bottom. Ids are unique.
    [[nodiscard]] const std::vector<OverlayAnnotation>& appliedList() const { return annotationAppliedList_; }
    [[nodiscard]] const OverlayAnnotation* find(const Uuid& id) const;
    [[nodiscard]] const std::vector<AnnotationUndoAction>& undoStack() const { return annotationUndoStack_; }
    [[nodiscard]] const std::vector<AnnotationUndoAction>& redoStack() const { return annotationRedoStack_; }

    [[nodiscard]] const std::optional<Uuid>& selectedID() const { return annotationActiveSelectionID_; }
    /// The selected annotation; nullptr without one, and while an undo has taken it from the list.
    [[nodiscard]] const OverlayAnnotation* selected() const;
    [[nodiscard]] const std::optional<DraftShapeAnnotation>& draft() const {
        return annotationActiveDraftShape_;
    }
    [[nodiscard]] bool isInteracting() const { return annotationActiveSelectionInteraction_.has_value(); }

    // Drawing
    void beginDraft(DraftShapeAnnotation draft);
    void dragDraft(Point point);
    /// Ends the draft and adds what it became, if it was large enough.
    void commitDraft();
    /// Puts `annotation`, whose id is new, on top.
    void addAnnotation(OverlayAnnotation annotation);

    // Selecting, moving and resizing
    /// Nothing happens when no annotation has that id.
    void selectAnnotation(const Uuid& id);
    void clearAnnotationSelection();
    /// Selects what was hit and remembers it as it is before the drag that starts at `point`.
    void beginInteraction(const AnnotationHit& hit, Point point);
    /// Moves or resizes the selected annotation; makes no history.
    void dragInteraction(Point point, const Rect& bounds);
    /// Ends the drag; what it changed becomes one entry of the history.
    void endInteraction();

    enum class Change { none, made };
    /// Gives the selected annotation `color`.
    Change recolorSelectedAnnotation(const Color& color);

    // Text
    /// Stores what was typed, in the annotation and in its every mention in the history: typing is undone by
    /// the text's own editor.
    void updateAnnotationText(const Uuid& id, std::string_view text);
    /// Removes the text annotation if only white space is left of it, and the entry that added it.
    Change removeIfEmptyText(const Uuid& id);

    // History
    /// False when there is nothing to undo, or to redo.
    [[nodiscard]] bool performUndo();
    [[nodiscard]] bool performRedo();

private:
    enum class Direction { undo, redo };
    void applyAction(const AnnotationUndoAction& action, Direction direction);
    bool transferAction(std::vector<AnnotationUndoAction>& source, std::vector<AnnotationUndoAction>& target,
                        Direction direction);
    void record(AnnotationUndoAction action);
    void commitActiveEdit();
    void refreshHistoryText(const OverlayAnnotation& updated);
    [[nodiscard]] OverlayAnnotation* findMutable(const Uuid& id);
    void insert(const OverlayAnnotation& annotation, std::size_t index);
    void erase(const Uuid& id);
    void replace(const OverlayAnnotation& annotation);

    std::optional<DraftShapeAnnotation> annotationActiveDraftShape_;
    std::optional<Uuid> annotationActiveSelectionID_;
    std::optional<AnnotationInteraction> annotationActiveSelectionInteraction_;
    std::optional<OverlayAnnotation> annotationActiveSelectionBeforeEdit_;
    std::optional<Rect> annotationActiveSelectionResizeStartRect_;
    std::vector<OverlayAnnotation> annotationAppliedList_;
    std::vector<AnnotationUndoAction> annotationUndoStack_;
    std::vector<AnnotationUndoAction> annotationRedoStack_;
};

/// Whether nothing but white space and line breaks is in `text` (UTF-8).
[[nodiscard]] bool isBlank(std::string_view text);

} // namespace glimmerly

#pragma once

#include "base/Geometry.h"
#include "base/Uuid.h"
#include "overlay/model/Color.h"
#include "overlay/model/SelectionHandle.h"
#include "overlay/model/SelectionTool.h"

#include <cstddef>
#include <string>
#include <variant>

namespace glimmerly {

/// An outline.
struct RectangleShape {
    Rect rect;
    bool operator==(const RectangleShape&) const = default;
};

/// Straight, with its head at `end`.
struct ArrowShape {
    Point start;
    Point end;
    bool operator==(const ArrowShape&) const = default;
};

/// The first line's left edge, vertically centred, sits at `anchor`.
struct TextLabel {
    Point anchor;
    std::string text; ///< UTF-8
    bool operator==(const TextLabel&) const = default;
};

/// What an annotation is and where, in canvas points.
using OverlayAnnotationKind = std::variant<RectangleShape, ArrowShape, TextLabel>;

/// The tool that draws annotations of this kind; its raw value is the kind's name.
[[nodiscard]] constexpr SelectionTool toolFor(const OverlayAnnotationKind& kind) {
    return static_cast<SelectionTool>(kind.index()); // the cases stand in the tools' order
}

/// Something drawn over the capture. `id` stays through moves, resizes, recolouring, undo and redo.
struct OverlayAnnotation {
    Uuid id;
    OverlayAnnotationKind kind;
    Color color;

    bool operator==(const OverlayAnnotation&) const = default;
};

/// A rectangle or arrow while the mouse that draws it is down.
struct DraftShapeAnnotation {
    Uuid id; ///< of the annotation that it becomes
    SelectionTool tool;
    Color color;
    Point start;
    Point current;
};

struct RectangleHandle {
    SelectionHandle handle;
    bool operator==(const RectangleHandle&) const = default;
};
struct ArrowStart {
    bool operator==(const ArrowStart&) const = default;
};
struct ArrowEnd {
    bool operator==(const ArrowEnd&) const = default;
};
/// What an annotation is resized by.
using AnnotationHandle = std::variant<RectangleHandle, ArrowStart, ArrowEnd>;

struct ResizeHit {
    Uuid id;
    AnnotationHandle handle;
    bool operator==(const ResizeHit&) const = default;
};
struct MoveHit {
    Uuid id;
    bool operator==(const MoveHit&) const = default;
};
/// What lies under the pointer.
using AnnotationHit = std::variant<ResizeHit, MoveHit>;

struct ResizeInteraction {
    AnnotationHandle handle;
};
struct MoveInteraction {
    Point lastViewPoint;
};
/// What the current drag does to the selected annotation.
using AnnotationInteraction = std::variant<ResizeInteraction, MoveInteraction>;

struct AddAction {
    OverlayAnnotation annotation;
};
struct RemoveAction {
    OverlayAnnotation annotation;
    std::size_t index;
};
struct EditAction {
    OverlayAnnotation oldAnnotation;
    OverlayAnnotation newAnnotation;
};
/// One entry of the history.
using AnnotationUndoAction = std::variant<AddAction, RemoveAction, EditAction>;

} // namespace glimmerly

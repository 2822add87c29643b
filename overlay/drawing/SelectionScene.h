#pragma once

#include "overlay/model/CanvasPixelGrid.h"
#include "overlay/model/Selection.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace glimmerly {

/// A text on its pill.
struct Tag {
    std::string text; ///< UTF-8
    PixelRect pill;

    bool operator==(const Tag&) const = default;
};

/// What is to be seen of a selection, in pixels of the overlay window.
struct SelectionFigure {
    PixelRect area;                  ///< the selected pixels
    std::vector<PixelRect> dimBands; ///< all others
    PixelRect frame;                 ///< the outer edge of the line around them
    int frameWidth = 1;              ///< of that line
    Tag sizeTag;
    std::array<PixelRect, allSelectionHandles.size()> handles; ///< the squares with their outlines
    int handleOutlineWidth = 1;

    bool operator==(const SelectionFigure&) const = default;
};

/// The four sides of the line around the selection; they do not overlap.
[[nodiscard]] std::array<PixelRect, 4> frameBands(const SelectionFigure& figure);

/// All that the canvas draws over the capture.
struct SelectionScene {
    std::optional<SelectionFigure> selection;
    std::optional<Tag> positionTag; ///< only without a selection

    bool operator==(const SelectionScene&) const = default;
};

/// The scene of `selection`, or without one to be seen, of a position tag at `crosshair`.
[[nodiscard]] SelectionScene makeSelectionScene(const Selection& selection,
                                                const std::optional<Point>& crosshair, const Rect& bounds,
                                                const CanvasPixelGrid& grid);

} // namespace glimmerly

#pragma once

#include "overlay/model/Color.h"

namespace glimmerly {

/// How the selection looks and how near the pointer must come, in points.
struct SelectionStyle {
    double selectionRectMinSize = 2;                ///< least width and height of a selection that is kept
    double selectionRectResizeHandleDrawRadius = 4; ///< half the side of the squares
    double selectionRectResizeHandleHitRadius = 8;
    double handleOutlineWidth = 1;
    Color handleFill = Color::white(1);
    Color handleOutline = Color::white(0, 0.5);
    double frameWidth = 1;
    Color frame = Color::white(1, 0.95);
    Color dimming = Color::white(0, 0.3);
};
inline constexpr SelectionStyle selectionStyle;

/// The pills that tell the selection's size and the pointer's position; lengths in points.
struct TagStyle {
    double fontSize = 12;
    Color text = Color::white(1, 0.97);
    double horizontalPadding = 8; ///< on each side of the text
    double verticalPadding = 4;   ///< above and below it
    double cornerRadius = 6;
    Color fill = Color::white(0, 0.72);
    double outlineWidth = 1;
    Color outline = Color::white(1, 0.2);
    double distanceFromSelection = 6;
    double distanceFromPointer = 10;
    double distanceFromEdge = 8; ///< kept between a tag and every edge of the canvas
};
inline constexpr TagStyle tagStyle;

} // namespace glimmerly

#pragma once

#include "base/Geometry.h"

#include <string>
#include <vector>

namespace glimmerly {

/// The parts of `bounds` outside the standardised `selection`: left and right at full height, then below and
/// above it; those that are empty are left out.
[[nodiscard]] std::vector<Rect> dimBands(const Rect& selection, const Rect& bounds);

/// Width and height as whole points, "640 x 480".
[[nodiscard]] std::string sizeTagText(const Rect& selection);
/// The coordinates as whole points, "(812, 344)".
[[nodiscard]] std::string positionTagText(Point point);

/// The pill for a text of `textSize` above the selection's top left corner, or inside it when there is no
/// room above.
[[nodiscard]] Rect sizeTagRect(const Rect& selection, Size textSize, const Rect& bounds);
/// The pill for a text of `textSize` up and right of the pointer.
[[nodiscard]] Rect positionTagRect(Point pointer, Size textSize, const Rect& bounds);

} // namespace glimmerly

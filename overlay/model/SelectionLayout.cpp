#include "overlay/model/SelectionLayout.h"

#include "overlay/model/RectResizing.h"
#include "overlay/model/SelectionStyle.h"

#include <algorithm>
#include <cmath>

namespace glimmerly {

namespace {

std::string wholePoints(double value) {
    return std::to_string(static_cast<long long>(value + std::copysign(positionTolerance, value)));
}

Size pillSize(Size textSize) {
    return {textSize.width + 2 * tagStyle.horizontalPadding, textSize.height + 2 * tagStyle.verticalPadding};
}

/// Moves `pill` away from the edges; in bounds too small for it the upper limit wins.
Rect keptFromEdges(const Rect& pill, const Rect& bounds) {
    const double gap = tagStyle.distanceFromEdge;
    const double x = std::min(std::max(pill.x, bounds.minX() + gap), bounds.maxX() - pill.width - gap);
    const double y = std::min(std::max(pill.y, bounds.minY() + gap), bounds.maxY() - pill.height - gap);
    return {x, y, pill.width, pill.height};
}

} // namespace

std::vector<Rect> dimBands(const Rect& selection, const Rect& bounds) {
    const Rect s = selection.standardized();
    const Rect b = bounds;
    std::vector<Rect> bands = {
        {b.minX(), b.minY(), s.minX() - b.minX(), b.height},
        {s.maxX(), b.minY(), b.maxX() - s.maxX(), b.height},
        {s.minX(), b.minY(), s.width, s.minY() - b.minY()},
        {s.minX(), s.maxY(), s.width, b.maxY() - s.maxY()},
    };
    std::erase_if(bands, [](const Rect& band) { return band.width <= 0 || band.height <= 0; });
    return bands;
}

std::string sizeTagText(const Rect& selection) {
    const Rect s = selection.standardized();
    return wholePoints(s.width) + " x " + wholePoints(s.height);
}

std::string positionTagText(Point point) {
    return "(" + wholePoints(point.x) + ", " + wholePoints(point.y) + ")";
}

Rect sizeTagRect(const Rect& selection, Size textSize, const Rect& bounds) {
    const Rect s = selection.standardized();
    const Size pill = pillSize(textSize);
    const double gap = tagStyle.distanceFromSelection;
    double y = s.maxY() + gap;
    if (y + pill.height > bounds.maxY() - tagStyle.distanceFromEdge)
        y = s.maxY() - pill.height - gap;
    return keptFromEdges({s.minX() + gap, y, pill.width, pill.height}, bounds);
}

Rect positionTagRect(Point pointer, Size textSize, const Rect& bounds) {
    const Size pill = pillSize(textSize);
    const double gap = tagStyle.distanceFromPointer;
    return keptFromEdges({pointer.x + gap, pointer.y + gap, pill.width, pill.height}, bounds);
}

} // namespace glimmerly

#include "overlay/model/RectResizing.h"

#include <algorithm>

namespace glimmerly {

namespace {

struct Span {
    double low;
    double high;
};

/// How near to a bound, in points, an edge counts as touching it.
constexpr double boundsTouchDistance = 0.5;

Span clampSpan(Span span, Span bounds, double minimum) {
    double low = std::max(bounds.low, span.low);
    double high = std::min(bounds.high, span.high);
    if (high - low < minimum - positionTolerance) {
        if (low <= bounds.low + boundsTouchDistance)
            high = std::min(low + minimum, bounds.high);
        else if (high >= bounds.high - boundsTouchDistance)
            low = std::max(high - minimum, bounds.low);
        else
            high = low + minimum;
    }
    return {low, high};
}

bool movesWestEdge(SelectionHandle handle) {
    return handle == SelectionHandle::nw || handle == SelectionHandle::w || handle == SelectionHandle::sw;
}
bool movesEastEdge(SelectionHandle handle) {
    return handle == SelectionHandle::ne || handle == SelectionHandle::e || handle == SelectionHandle::se;
}
bool movesNorthEdge(SelectionHandle handle) {
    return handle == SelectionHandle::nw || handle == SelectionHandle::n || handle == SelectionHandle::ne;
}
bool movesSouthEdge(SelectionHandle handle) {
    return handle == SelectionHandle::sw || handle == SelectionHandle::s || handle == SelectionHandle::se;
}

} // namespace

bool isSmallerThan(const Rect& rect, double minimum) {
    const Rect r = rect.standardized();
    return r.width < minimum - positionTolerance || r.height < minimum - positionTolerance;
}

Rect resizedRect(const Rect& start, SelectionHandle handle, Point point, const Rect& bounds,
                 double minimumSize) {
    const double left = movesWestEdge(handle) ? point.x : start.minX();
    const double right = movesEastEdge(handle) ? point.x : start.maxX();
    const double bottom = movesSouthEdge(handle) ? point.y : start.minY();
    const double top = movesNorthEdge(handle) ? point.y : start.maxY();
    return clampRectToBounds(Rect::fromCorners({left, bottom}, {right, top}), bounds, minimumSize);
}

Rect clampRectToBounds(const Rect& rect, const Rect& bounds, double minimumSize) {
    if (isSmallerThan(rect, minimumSize))
        return rect;
    const auto x = clampSpan({rect.minX(), rect.maxX()}, {bounds.minX(), bounds.maxX()}, minimumSize);
    const auto y = clampSpan({rect.minY(), rect.maxY()}, {bounds.minY(), bounds.maxY()}, minimumSize);
    return Rect::fromCorners({x.low, y.low}, {x.high, y.high});
}

} // namespace glimmerly

#include "overlay/model/SelectionHandle.h"

#include <algorithm>

namespace glimmerly {

Point handlePoint(SelectionHandle handle, const Rect& rect) {
    switch (handle) {
    case SelectionHandle::nw:
        return {rect.minX(), rect.maxY()};
    case SelectionHandle::n:
        return {rect.midX(), rect.maxY()};
    case SelectionHandle::ne:
        return {rect.maxX(), rect.maxY()};
    case SelectionHandle::e:
        return {rect.maxX(), rect.midY()};
    case SelectionHandle::se:
        return {rect.maxX(), rect.minY()};
    case SelectionHandle::s:
        return {rect.midX(), rect.minY()};
    case SelectionHandle::sw:
        return {rect.minX(), rect.minY()};
    case SelectionHandle::w:
        return {rect.minX(), rect.midY()};
    }
    return rect.origin();
}

std::optional<SelectionHandle> hitTestSelectionHandle(Point point, const Rect& rect, double radius) {
    const auto found = std::ranges::find_if(allSelectionHandles, [&](SelectionHandle handle) {
        const Point distance = point - handlePoint(handle, rect);
        return distance.x * distance.x + distance.y * distance.y <= radius * radius;
    });
    if (found == allSelectionHandles.end())
        return std::nullopt;
    return *found;
}

} // namespace glimmerly

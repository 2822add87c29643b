#pragma once

#include "base/Geometry.h"

#include <array>
#include <optional>

namespace glimmerly {

/// The eight grips of a rectangle; north is the larger y.
enum class SelectionHandle { nw, n, ne, e, se, s, sw, w };

/// In the order in which handles are looked at everywhere; the first match wins.
inline constexpr std::array allSelectionHandles = {
    SelectionHandle::nw, SelectionHandle::n, SelectionHandle::ne, SelectionHandle::e,
    SelectionHandle::se, SelectionHandle::s, SelectionHandle::sw, SelectionHandle::w};

/// Where `handle` lies on the standardised `rect`.
[[nodiscard]] Point handlePoint(SelectionHandle handle, const Rect& rect);

/// The first handle of the standardised `rect` whose distance to `point` is at most `radius` points.
[[nodiscard]] std::optional<SelectionHandle> hitTestSelectionHandle(Point point, const Rect& rect,
                                                                    double radius);

} // namespace glimmerly

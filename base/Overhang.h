#pragma once

namespace glimmerly {

/// Rows that an overlay has beyond its display, or an expanded picture beyond the captured one. They are
/// shared between both edges, so that each frozen pixel lies exactly over the live one.
struct Overhang {
    int top = 0;
    int bottom = 0;

    [[nodiscard]] constexpr int total() const { return top + bottom; }
    constexpr bool operator==(const Overhang&) const = default;
};

/// What `nativeHeight` rows lack to be `heightPoints` tall at `backingScale` pixels a point; nothing when
/// they are enough or the numbers are unusable. An odd row goes below.
[[nodiscard]] Overhang overhang(double heightPoints, double backingScale, int nativeHeight);

} // namespace glimmerly

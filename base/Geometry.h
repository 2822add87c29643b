#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace glimmerly {

/// Pixel positions nearer than this are one: rounding outwards must not add a pixel for the last binary digit
/// of a product with a fractional scale.
inline constexpr double pixelTolerance = 1e-6;

/// A position in points; y grows upwards.
struct Point {
    double x = 0;
    double y = 0;

    constexpr bool operator==(const Point&) const = default;
    friend constexpr Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
};

/// An extent in points.
struct Size {
    double width = 0;
    double height = 0;

    constexpr bool operator==(const Size&) const = default;
};

/// A rectangle in points, origin at the bottom-left, y upwards. Width and height may be negative until
/// `standardized`; the min, mid and max values are those of the standardised rectangle.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] static constexpr Rect fromCorners(Point a, Point b) {
        return Rect{a.x, a.y, b.x - a.x, b.y - a.y}.standardized();
    }

    [[nodiscard]] constexpr double minX() const { return std::min(x, x + width); }
    [[nodiscard]] constexpr double maxX() const { return std::max(x, x + width); }
    [[nodiscard]] constexpr double midX() const { return x + width / 2; }
    [[nodiscard]] constexpr double minY() const { return std::min(y, y + height); }
    [[nodiscard]] constexpr double maxY() const { return std::max(y, y + height); }
    [[nodiscard]] constexpr double midY() const { return y + height / 2; }
    [[nodiscard]] constexpr Point origin() const { return {x, y}; }
    [[nodiscard]] constexpr Size size() const { return {width, height}; }
    [[nodiscard]] constexpr bool isEmpty() const { return width == 0 || height == 0; }

    /// The same area with non-negative width and height.
    [[nodiscard]] constexpr Rect standardized() const {
        return {minX(), minY(), width < 0 ? -width : width, height < 0 ? -height : height};
    }
    /// Shrunk by `inset` points on every side; a negative inset grows it.
    [[nodiscard]] constexpr Rect insetBy(double inset) const {
        return {x + inset, y + inset, width - 2 * inset, height - 2 * inset};
    }
    [[nodiscard]] constexpr Rect offsetBy(double dx, double dy) const {
        return {x + dx, y + dy, width, height};
    }
    /// Half-open: the minimum edges are inside, the maximum edges outside.
    [[nodiscard]] constexpr bool contains(Point p) const {
        return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
    }
    /// The common area, or a rectangle of zero size when there is none.
    [[nodiscard]] constexpr Rect intersected(const Rect& other) const {
        const double left = std::max(minX(), other.minX());
        const double right = std::min(maxX(), other.maxX());
        const double bottom = std::max(minY(), other.minY());
        const double top = std::min(maxY(), other.maxY());
        if (right <= left || top <= bottom)
            return {};
        return {left, bottom, right - left, top - bottom};
    }

    constexpr bool operator==(const Rect&) const = default;
};

/// A pixel, counted from the top-left, y downwards.
struct PixelPoint {
    int x = 0;
    int y = 0;

    constexpr bool operator==(const PixelPoint&) const = default;
};

/// An extent in whole pixels.
struct PixelSize {
    int width = 0;
    int height = 0;

    constexpr bool operator==(const PixelSize&) const = default;
};

/// A rectangle in whole pixels, origin at the top-left, y downwards.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] constexpr int maxX() const { return x + width; }
    [[nodiscard]] constexpr int maxY() const { return y + height; }
    [[nodiscard]] constexpr PixelSize size() const { return {width, height}; }
    constexpr bool operator==(const PixelRect&) const = default;
};

} // namespace glimmerly

#pragma once

namespace glimmerly {

/// A colour in sRGB; every component from 0 to 1, not premultiplied.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    [[nodiscard]] static constexpr Color white(double level, double alpha = 1) {
        return {level, level, level, alpha};
    }
    [[nodiscard]] constexpr Color withAlpha(double newAlpha) const { return {red, green, blue, newAlpha}; }

    constexpr bool operator==(const Color&) const = default;
};

} // namespace glimmerly

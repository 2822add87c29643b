#pragma once

#include <QImage>
#include <QRect>

namespace glimmerly {

/// The shadow that a rounded rectangle casts. Lengths are pixels.
struct ShadowShape {
    double cornerRadius = 0;
    double deviation = 0; ///< of the Gaussian that blurs it
    double opacity = 0;   ///< 0 to 1, where nothing is blurred

    /// Beyond this many deviations from the rectangle so faint a shadow rounds to nothing.
    static constexpr double reachInDeviations = 2.3;
};

/// A picture of `size` with the shadow, in black, of the rectangle `caster` in it.
[[nodiscard]] QImage shadowImage(QSize size, const QRect& caster, const ShadowShape& shape);

} // namespace glimmerly

#pragma once

#include "base/Geometry.h"

#include <QFont>

#include <string_view>

namespace glimmerly {

/// The tags' font, semibold and with digits of equal width, so that a tag does not jitter while its numbers
/// change.
[[nodiscard]] const QFont& tagFont();

/// The size of `text` in that font, in points, as a whole number of pixels at `scale` pixels a point.
[[nodiscard]] Size tagTextSize(std::string_view text, double scale);

} // namespace glimmerly

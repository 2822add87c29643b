#pragma once

#include "overlay/drawing/SelectionScene.h"

#include <QRegion>

namespace glimmerly {

/// The pixels of the overlay window, of size `window`, that may differ between two scenes.
[[nodiscard]] QRegion damageBetween(const SelectionScene& before, const SelectionScene& after,
                                    PixelSize window);

} // namespace glimmerly

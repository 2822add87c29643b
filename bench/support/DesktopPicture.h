#pragma once

#include "base/Bitmap.h"

namespace glimmerly {

/// What a screen usually shows, always the same: a photo behind windows full of text, panels with gradients,
/// icons and a photo viewer. Opaque. Needs no QGuiApplication on a display; the offscreen platform will do.
[[nodiscard]] Bitmap desktopPicture(PixelSize size);

} // namespace glimmerly

#pragma once

#include "platform/Pasteboard.h"

namespace glimmerly {

/// The desktop's clipboard. What is written outlives the program where a clipboard manager runs.
class QtPasteboard : public Pasteboard {
public:
    [[nodiscard]] PasteboardOutcome writeImage(const Bitmap& image, Size size) override;
};

} // namespace glimmerly

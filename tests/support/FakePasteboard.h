#pragma once

#include "platform/Pasteboard.h"

#include <optional>

namespace glimmerly {

/// Keeps what was last written, unless it is told to refuse.
class FakePasteboard : public Pasteboard {
public:
    [[nodiscard]] PasteboardOutcome writeImage(const Bitmap& written, Size size) override {
        if (outcome == PasteboardOutcome::written) {
            image = written;
            imageSize = size;
        }
        return outcome;
    }

    PasteboardOutcome outcome = PasteboardOutcome::written;
    std::optional<Bitmap> image;
    Size imageSize; ///< points
};

} // namespace glimmerly

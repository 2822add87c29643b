#pragma once

#include "base/Bitmap.h"
#include "tests/e2e/support/Desktop.h"

#include <optional>
#include <string>

namespace glimmerly::e2e {

/// The clipboard of a desktop as another program reads it.
class Clipboard {
public:
    explicit Clipboard(const Desktop& desktop) : desktop_(desktop) {}

    /// The image/png that lies there; none when there is no such thing or it is no picture.
    [[nodiscard]] std::optional<Bitmap> picture() const;
    /// Puts `text` there from another program, which stays its owner.
    void setText(Desktop& desktop, const std::string& text) const;
    [[nodiscard]] std::optional<std::string> text() const;

private:
    const Desktop& desktop_;
};

/// The pixels of a PNG file's bytes; none when they are no such file.
[[nodiscard]] std::optional<Bitmap> decodePng(const std::string& bytes);

} // namespace glimmerly::e2e

#pragma once

#include "base/Bitmap.h"
#include "platform/png/PngEncoder.h"
#include "tests/support/ScratchDirectory.h"

#include <filesystem>
#include <string>

namespace glimmerly {

/// An opaque picture in which no two pixels near each other are alike.
[[nodiscard]] inline Bitmap noisePicture(PixelSize size) {
    Bitmap picture(size);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const auto place = static_cast<Bitmap::Pixel>(y * size.width + x);
            picture.row(y)[static_cast<std::size_t>(x)] = 0xff000000U | ((place * 2654435761U) >> 8);
        }
    }
    return picture;
}

/// Writes `picture` as a PNG file at `path`.
inline void writePng(const std::filesystem::path& path, const Bitmap& picture) {
    const auto png = encodePng(picture, PngProfile::quick).value();
    writeContent(path, std::string_view(reinterpret_cast<const char*>(png.data()), png.size()));
}

} // namespace glimmerly

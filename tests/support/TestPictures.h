#pragma once

#include "base/Bitmap.h"
#include "platform/png/PngEncoder.h"
#include "tests/support/NoisePicture.h"
#include "tests/support/ScratchDirectory.h"

#include <filesystem>
#include <string>

namespace glimmerly {

/// Writes `picture` as a PNG file at `path`.
inline void writePng(const std::filesystem::path& path, const Bitmap& picture) {
    const auto png = encodePng(picture, PngProfile::quick).value();
    writeContent(path, std::string_view(reinterpret_cast<const char*>(png.data()), png.size()));
}

} // namespace glimmerly

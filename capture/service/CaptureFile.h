#pragma once

#include <filesystem>

namespace glimmerly {

/// A new location for one capture: "glimmerly-capture-", an upper-case UUID and ".png" in the user's
/// temporary directory. Makes the directory where it can; where it cannot, writing there will say why.
[[nodiscard]] std::filesystem::path makeCaptureFileURL();

} // namespace glimmerly

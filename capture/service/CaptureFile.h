#pragma once

#include <filesystem>

namespace glimmerly {

/// A new location for one capture: "glimmerly-capture-", an upper-case UUID and ".png" in the user's
/// temporary directory. Makes the directory where it can; where it cannot, writing there will say why.
[[nodiscard]] std::filesystem::path makeCaptureFileURL();

/// Removes the captures, whole or in part, of a process that was killed. Only for the one instance.
void removeAbandonedCaptureFiles();

} // namespace glimmerly

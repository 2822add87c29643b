#include "capture/service/CaptureFile.h"

#include "base/Uuid.h"

namespace glimmerly {

std::filesystem::path makeCaptureFileURL(const std::filesystem::path& directory) {
    return directory / ("glimmerly-capture-" + Uuid::generate().toString() + ".png");
}

} // namespace glimmerly

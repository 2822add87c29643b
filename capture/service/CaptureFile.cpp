#include "capture/service/CaptureFile.h"

#include "base/Uuid.h"
#include "platform/files/Directories.h"

namespace glimmerly {

std::filesystem::path makeCaptureFileURL() {
    const auto directory = temporaryDirectory().value_or(temporaryDirectoryLocation());
    return directory / ("glimmerly-capture-" + Uuid::generate().toString() + ".png");
}

} // namespace glimmerly

#include "capture/service/CaptureFile.h"

#include "base/Uuid.h"
#include "platform/files/Directories.h"

#include <string>
#include <string_view>
#include <vector>

namespace glimmerly {

namespace {

constexpr std::string_view prefix = "glimmerly-capture-";
constexpr std::string_view unfinishedPrefix = ".glimmerly-";

} // namespace

std::filesystem::path makeCaptureFileURL() {
    const auto directory = temporaryDirectory().value_or(temporaryDirectoryLocation());
    return directory / (std::string(prefix) + Uuid::generate().toString() + ".png");
}

void removeAbandonedCaptureFiles() {
    const auto directory = temporaryDirectory();
    if (!directory)
        return;
    std::error_code ignored;
    std::vector<std::filesystem::path> abandoned;
    for (const auto& entry : std::filesystem::directory_iterator(*directory, ignored)) {
        const std::string name = entry.path().filename();
        if (name.starts_with(prefix) || name.starts_with(unfinishedPrefix))
            abandoned.push_back(entry.path());
    }
    for (const auto& file : abandoned)
        std::filesystem::remove(file, ignored);
}

} // namespace glimmerly

#include "platform/linux/updates/install/InstalledFolder.h"

#include "platform/files/ReadFile.h"
#include "platform/linux/updates/install/UpdateSlot.h"

#include <unistd.h>

namespace glimmerly {

namespace fs = std::filesystem;

InstalledFolder::InstalledFolder(const fs::path& executable)
    : folder_(executable.parent_path().parent_path()) {}

InstalledFolder InstalledFolder::ofThisProcess() {
    std::error_code unknown;
    return InstalledFolder(fs::read_symlink("/proc/self/exe", unknown));
}

fs::path InstalledFolder::slot() const {
    return folder_.parent_path() / ("." + folder_.filename().string() + ".update");
}

Replaceability InstalledFolder::replaceability() const {
    if (!archiveVersionIn(folder_))
        return Replaceability::managedElsewhere;
    constexpr int needed = W_OK | X_OK;
    if (::access(folder_.c_str(), needed) != 0 || ::access(folder_.parent_path().c_str(), needed) != 0)
        return Replaceability::notWritable;
    return Replaceability::replaceable;
}

void InstalledFolder::removeLeftovers() const {
    std::error_code none;
    if (replaceability() == Replaceability::replaceable && fs::exists(fs::symlink_status(slot(), none)))
        (void)UpdateSlot::claim(slot()); // which empties it, and takes it away at the end of its life
}

std::optional<std::string> archiveVersionIn(const fs::path& folder) {
    const auto content = readFile(folder / InstalledFolder::versionFile);
    if (!content)
        return std::nullopt;
    return content->substr(0, content->find('\n'));
}

} // namespace glimmerly

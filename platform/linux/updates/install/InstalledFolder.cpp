#include "platform/linux/updates/install/InstalledFolder.h"

#include "platform/files/ReadFile.h"
#include "platform/linux/updates/feed/VersionOrder.h"
#include "platform/linux/updates/install/UpdateSlot.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ranges>
#include <set>
#include <string_view>

namespace glimmerly {

namespace fs = std::filesystem;

namespace {

/// Whoever unpacks the archive without its own folder, into ~/.local for one, has it among other things.
bool holdsOnlyTheArchive(const fs::path& folder, std::string_view contents) {
    std::set<fs::path> own;
    for (const auto line : std::views::split(contents, '\n'))
        own.emplace(std::string_view(line));
    std::error_code failed;
    for (fs::recursive_directory_iterator entry(folder, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const bool isDirectory = fs::is_directory(entry->symlink_status(failed));
        if (!isDirectory && !own.contains(entry->path().lexically_relative(folder)))
            return false;
    }
    return !failed;
}

/// Also where a folder of the same file system is mounted, which numbers of devices do not tell.
bool isMountPoint(const fs::path& folder) {
    struct statx info{};
    return ::statx(AT_FDCWD, folder.c_str(), 0, STATX_TYPE, &info) == 0 &&
           (info.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

} // namespace

InstalledFolder::InstalledFolder(fs::path executable)
    : executable_(std::move(executable)), folder_(executable_.parent_path().parent_path()) {}

InstalledFolder InstalledFolder::ofThisProcess() {
    std::error_code unknown;
    return InstalledFolder(fs::read_symlink("/proc/self/exe", unknown));
}

fs::path InstalledFolder::slot() const {
    return folder_.parent_path() / ("." + folder_.filename().string() + ".update");
}

bool InstalledFolder::keepsOlderVersion() const {
    const auto other = archiveVersionIn(otherVersion());
    return other && ::access((otherVersion() / program).c_str(), X_OK) == 0 &&
           compareVersions(*other, archiveVersionIn(folder_).value_or("")) < 0;
}

bool InstalledFolder::isNewerThan(const std::string& version) const {
    return compareVersions(archiveVersionIn(folder_).value_or(""), version) > 0;
}

Replaceability InstalledFolder::replaceability() const {
    const auto contents = readFile(folder_ / contentsFile);
    if (!contents)
        return Replaceability::managedElsewhere;
    if (!holdsOnlyTheArchive(folder_, *contents))
        return Replaceability::inSharedFolder;
    constexpr int needed = W_OK | X_OK;
    if (::access(folder_.c_str(), needed) != 0 || ::access(folder_.parent_path().c_str(), needed) != 0)
        return Replaceability::notWritable;
    if (isMountPoint(folder_))
        return Replaceability::notExchangeable;
    return Replaceability::replaceable;
}

std::optional<std::string> InstalledFolder::removeLeftovers(const std::string& startedVersion) const {
    std::error_code none;
    if (!fs::exists(fs::symlink_status(slot(), none)) || replaceability() != Replaceability::replaceable)
        return std::nullopt;
    auto claimed = UpdateSlot::claim(slot()); // which takes it away at the end of its life
    if (!claimed)
        return std::nullopt;
    if (archiveVersionIn(folder_) != startedVersion) { // which has yet to start
        claimed->keep();
        return std::nullopt;
    }
    return archiveVersionIn(failedVersion());
}

std::optional<std::string> archiveVersionIn(const fs::path& folder) {
    const auto content = readFile(folder / InstalledFolder::contentsFile);
    if (!content)
        return std::nullopt;
    return content->substr(0, content->find('\n'));
}

} // namespace glimmerly

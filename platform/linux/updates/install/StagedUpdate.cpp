#include "platform/linux/updates/install/StagedUpdate.h"

#include "platform/files/Directories.h"
#include "platform/files/PositionedFile.h"
#include "platform/linux/updates/archive/UnpackedFolder.h"
#include "platform/linux/updates/feed/VersionOrder.h"
#include "platform/linux/updates/install/FolderExchange.h"
#include "platform/linux/updates/install/SelfCheck.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>

namespace glimmerly {

namespace {

namespace fs = std::filesystem;

/// Finds out before anything is fetched; leaves nothing behind.
Result<void> tryExchange(const fs::path& slot) {
    const fs::path one = slot / "one";
    const fs::path other = slot / "other";
    for (const auto& folder : {one, other}) {
        if (auto made = makePrivateDirectory(folder); !made)
            return made;
    }
    auto outcome = exchangeFolders(one, other);
    ::rmdir(one.c_str());
    ::rmdir(other.c_str());
    return outcome;
}

/// The names in them; the files' bytes are there already.
void forceFoldersToDisk(const fs::path& top) {
    std::error_code failed;
    for (fs::recursive_directory_iterator entry(top, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        if (entry->is_directory(failed))
            forceToDisk(entry->path());
    }
    forceToDisk(top);
}

} // namespace

Result<ArrivingArchive> ArrivingArchive::create(const UpdateSlot& slot) {
    constexpr auto name = "archive";
    FileDescriptor file(::openat(slot.directory().get(), name,
                                 O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file || ::unlinkat(slot.directory().get(), name, 0) != 0)
        return posixFailure("Creating the file for the update");
    return ArrivingArchive(std::move(file));
}

Result<void> ArrivingArchive::add(std::span<const std::byte> bytes) {
    auto written = writeAt(file_, bytes, size_);
    size_ += bytes.size();
    return written;
}

Result<ByteBuffer> ArrivingArchive::read() const {
    constexpr auto purpose = "Reading the update";
    try {
        ByteBuffer bytes(size_);
        const auto count = readAt(file_, bytes.span(), 0);
        if (!count)
            return failure(count.error());
        if (*count < bytes.size())
            return failure(Error::posix(EIO, purpose));
        return bytes;
    } catch (const std::bad_alloc&) {
        return failure(Error::posix(ENOMEM, purpose));
    }
}

Result<StagedUpdate> StagedUpdate::begin(const InstalledFolder& installed,
                                         const std::string& runningVersion) {
    auto slot = UpdateSlot::claim(installed.slot());
    if (!slot)
        return failure(slot.error());
    if (installed.isNewerThan(runningVersion)) {
        slot->keep();
        return failure(Error("GlimmerlyUpdate", 4, "Another instance has installed a newer version."));
    }
    if (auto cleared = slot->clear(); !cleared) {
        slot->keep();
        return failure(cleared.error());
    }
    if (auto possible = tryExchange(slot->path()); !possible)
        return failure(possible.error());
    return StagedUpdate(installed, std::move(*slot));
}

Result<void> StagedUpdate::unpack(std::span<const std::byte> archive, const std::stop_token& stop) {
    if (::mkdir(installed_.otherVersion().c_str(), S_IRWXU) != 0)
        return posixFailure("Making " + installed_.otherVersion().string());
    auto folder = UnpackedFolder::open(installed_.otherVersion(), stop);
    if (!folder)
        return failure(folder.error());
    if (auto unpacked = readArchive(archive, *folder); !unpacked)
        return unpacked;
    // As whoever unpacks the archive by hand gets it.
    if (::chmod(installed_.otherVersion().c_str(), S_IRWXU | S_IRGRP | S_IXGRP | S_IROTH | S_IXOTH) != 0)
        return posixFailure("Setting the mode of " + installed_.otherVersion().string());
    forceFoldersToDisk(installed_.otherVersion());
    return {};
}

std::optional<std::string> StagedUpdate::version() const {
    if (::access((installed_.otherVersion() / InstalledFolder::program).c_str(), X_OK) != 0)
        return std::nullopt;
    return archiveVersionIn(installed_.otherVersion());
}

Result<void> StagedUpdate::check(const std::stop_token& stop) const {
    return runSelfCheck(installed_.otherVersion() / InstalledFolder::program, stop);
}

Result<void> StagedUpdate::install() {
    if (installed_.replaceability() != Replaceability::replaceable)
        return failure(
            Error::posix(EPERM, "The folder " + installed_.path().string() + " is not ours to replace"));
    const auto mine = version().value_or("");
    const auto present = archiveVersionIn(installed_.path()).value_or("");
    if (compareVersions(mine, present) <= 0)
        return failure(
            Error("GlimmerlyUpdate", 3, mine + " is not newer than " + present + ", which is installed."));
    auto exchanged = exchangeFolders(installed_.path(), installed_.otherVersion());
    if (exchanged)
        slot_.keep();
    return exchanged;
}

Result<void> StagedUpdate::revert() {
    auto exchanged = exchangeFolders(installed_.path(), installed_.otherVersion());
    if (exchanged)
        slot_.doNotKeep();
    return exchanged;
}

} // namespace glimmerly

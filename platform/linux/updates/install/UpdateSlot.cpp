#include "platform/linux/updates/install/UpdateSlot.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace glimmerly {

namespace {

namespace fs = std::filesystem;

bool isOursAlone(const FileDescriptor& directory) {
    struct stat info{};
    return ::fstat(directory.get(), &info) == 0 && info.st_uid == ::geteuid() &&
           (info.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool makeEmpty(const fs::path& folder) {
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(folder, failed))
        fs::remove_all(entry.path(), failed);
    return fs::is_empty(folder, failed) && !failed;
}

} // namespace

Result<UpdateSlot> UpdateSlot::claim(const fs::path& path) {
    if (::mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        return posixFailure("Making " + path.string());
    FileDescriptor directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!directory)
        return posixFailure("Opening " + path.string());
    if (!isOursAlone(directory))
        return failure(Error::posix(EPERM, "The folder " + path.string() + " is not ours alone"));
    if (::flock(directory.get(), LOCK_EX | LOCK_NB) != 0)
        return posixFailure("Another update is under way in " + path.string());
    UpdateSlot slot(path, std::move(directory));
    if (!makeEmpty(path)) {
        slot.keep();
        return failure(Error::posix(EBUSY, "Emptying " + path.string()));
    }
    return slot;
}

UpdateSlot::~UpdateSlot() {
    std::error_code stays;
    if (directory_ && !isKept_)
        fs::remove_all(path_, stays);
}

} // namespace glimmerly

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

/// False when whoever held the directory has taken it away meanwhile: a lock on it then excludes nobody.
bool isStillAt(const fs::path& path, const FileDescriptor& directory) {
    struct stat opened{};
    struct stat named{};
    return ::fstat(directory.get(), &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

} // namespace

Result<UpdateSlot> UpdateSlot::claim(const fs::path& path, WhenHeld whenHeld) {
    const int lock = LOCK_EX | (whenHeld == WhenHeld::fail ? LOCK_NB : 0);
    for (;;) {
        if (::mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST)
            return posixFailure("Making " + path.string());
        FileDescriptor directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!directory && errno == ENOENT)
            continue; // taken away in between
        if (!directory)
            return posixFailure("Opening " + path.string());
        if (!isOursAlone(directory))
            return failure(Error::posix(EPERM, "The folder " + path.string() + " is not ours alone"));
        if (::flock(directory.get(), lock) != 0)
            return posixFailure("Another update is under way in " + path.string());
        if (isStillAt(path, directory))
            return UpdateSlot(path, std::move(directory));
    }
}

void UpdateSlot::removeVersion() {
    const fs::path removed = path_ / "removed";
    std::error_code stays;
    fs::remove_all(removed, stays);
    fs::rename(path_ / version, removed, stays);
    fs::remove_all(removed, stays);
}

Result<void> UpdateSlot::clear() {
    removeVersion();
    std::error_code failed;
    for (fs::directory_iterator entry(path_, failed), end; !failed && entry != end; entry.increment(failed)) {
        std::error_code stays;
        fs::remove_all(entry->path(), stays);
    }
    if (failed || !fs::is_empty(path_, failed) || failed)
        return failure(Error::posix(EBUSY, "Emptying " + path_.string()));
    return {};
}

UpdateSlot::~UpdateSlot() {
    if (!directory_ || isKept_)
        return;
    removeVersion();
    std::error_code stays;
    fs::remove_all(path_, stays);
}

} // namespace glimmerly

#include "platform/files/AppendFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace glimmerly {

namespace {

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

FileStamp stampFrom(const struct stat& info) {
    return {info.st_dev, info.st_ino, info.st_size,
            info.st_mtim.tv_sec * std::int64_t{1'000'000'000} + info.st_mtim.tv_nsec};
}

} // namespace

Result<FileStamp> stampOf(const std::filesystem::path& path) {
    struct stat info{};
    if (::lstat(path.c_str(), &info) != 0)
        return posixFailure("Examining " + path.string());
    return stampFrom(info);
}

Result<AppendFile> AppendFile::open(const std::filesystem::path& path) {
    // Opening a pipe that nobody reads from must not wait for a reader.
    FileDescriptor file(
        ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, ownerOnly));
    if (!file)
        return posixFailure("Opening " + path.string());
    const auto info = statusOfRegular(file, path);
    if (!info)
        return failure(info.error());
    if ((info->st_mode & ALLPERMS) != ownerOnly && ::fchmod(file.get(), ownerOnly) != 0)
        return posixFailure("Setting the mode of " + path.string());
    return AppendFile(std::move(file));
}

Result<void> AppendFile::append(std::string_view text) {
    ssize_t written = 0;
    do {
        written = ::write(file_.get(), text.data(), text.size());
    } while (written < 0 && errno == EINTR);
    if (written < 0)
        return posixFailure("Adding to a file");
    if (static_cast<std::size_t>(written) == text.size())
        return {};
    takeBack(static_cast<std::size_t>(written));
    return failure(Error::posix(ENOSPC, "Adding to a file"));
}

void AppendFile::takeBack(std::size_t count) {
    const off_t end = ::lseek(file_.get(), 0, SEEK_CUR);
    if (end < static_cast<off_t>(count) || ::ftruncate(file_.get(), end - static_cast<off_t>(count)) != 0)
        return; // the fragment stays; its reader drops it
}

Result<FileStamp> AppendFile::stamp() const {
    struct stat info{};
    if (::fstat(file_.get(), &info) != 0)
        return posixFailure("Examining a file");
    return stampFrom(info);
}

Result<void> AppendFile::synchronize() {
    if (::fsync(file_.get()) != 0)
        return posixFailure("Forcing a file to the disk");
    return {};
}

} // namespace glimmerly

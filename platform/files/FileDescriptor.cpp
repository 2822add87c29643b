#include "platform/files/FileDescriptor.h"

#include <unistd.h>

#include <cerrno>

namespace glimmerly {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
}

FileDescriptor::~FileDescriptor() {
    if (fd_ >= 0)
        ::close(fd_);
}

Result<void> FileDescriptor::close() {
    if (fd_ >= 0 && ::close(std::exchange(fd_, -1)) != 0)
        return posixFailure("Closing a file");
    return {};
}

Result<struct stat> statusOfRegular(const FileDescriptor& file, const std::filesystem::path& path) {
    struct stat info{};
    if (::fstat(file.get(), &info) != 0)
        return posixFailure("Examining " + path.string());
    if (!S_ISREG(info.st_mode))
        return failure(Error::posix(EINVAL, "Not a regular file: " + path.string()));
    return info;
}

std::unexpected<Error> posixFailure(std::string_view what) {
    return failure(Error::posix(errno, what));
}

} // namespace glimmerly

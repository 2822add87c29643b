#pragma once

#include "base/Result.h"

#include <sys/stat.h>

#include <filesystem>
#include <string_view>
#include <utility>

namespace glimmerly {

/// Owns an open file or directory, or none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int fd) : fd_(fd) {}
    FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    ~FileDescriptor();

    [[nodiscard]] explicit operator bool() const { return fd_ >= 0; }
    [[nodiscard]] int get() const { return fd_; }

    /// Owns none afterwards, also when the system reports a failure: Linux lets go of it either way.
    [[nodiscard]] Result<void> close();

private:
    int fd_ = -1;
};

/// What the system says of `file`, open and found at `path`; a failure when it is anything but a regular
/// file.
[[nodiscard]] Result<struct stat> statusOfRegular(const FileDescriptor& file,
                                                  const std::filesystem::path& path);

/// The failure that `errno` holds, in the step `what`, as what a function returns.
[[nodiscard]] std::unexpected<Error> posixFailure(std::string_view what);

} // namespace glimmerly

#include "platform/files/ReadFile.h"

#include "platform/files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace glimmerly {

namespace {

/// Opening a pipe that nobody writes to must not wait for a writer.
constexpr int openFlags = O_RDONLY | O_NONBLOCK | O_CLOEXEC;

Result<std::string> readRegular(const FileDescriptor& file, const std::filesystem::path& path,
                                std::size_t largest) {
    if (!file)
        return posixFailure("Opening " + path.string());
    const auto info = statusOfRegular(file, path);
    if (!info)
        return failure(info.error());

    std::string content;
    std::size_t length = 0;
    const auto announced = static_cast<std::size_t>(info->st_size);
    if (announced > largest)
        return failure(Error::posix(EFBIG, "Too large: " + path.string()));
    content.resize(announced + 1); // the last byte finds the end in one go
    for (;;) {
        const ssize_t count = ::read(file.get(), content.data() + length, content.size() - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return posixFailure("Reading " + path.string());
        length += static_cast<std::size_t>(count);
        if (length > largest)
            return failure(Error::posix(EFBIG, "Too large: " + path.string()));
        if (count == 0)
            break;
        if (length == content.size())
            content.resize(2 * length);
    }
    content.resize(length);
    return content;
}

} // namespace

Result<std::string> readFile(const std::filesystem::path& path, std::size_t largest) {
    const FileDescriptor file(::open(path.c_str(), openFlags | O_NOFOLLOW));
    return readRegular(file, path, largest);
}

Result<std::string> readForeignFile(const std::filesystem::path& path, std::size_t largest) {
    const FileDescriptor file(::open(path.c_str(), openFlags));
    return readRegular(file, path, largest);
}

} // namespace glimmerly

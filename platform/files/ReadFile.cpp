#include "platform/files/ReadFile.h"

#include "platform/files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace glimmerly {

Result<std::string> readFile(const std::filesystem::path& path) {
    // Opening a pipe that nobody writes to must not wait for a writer.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        return posixFailure("Opening " + path.string());
    struct stat info{};
    if (::fstat(file.get(), &info) != 0)
        return posixFailure("Examining " + path.string());
    if (!S_ISREG(info.st_mode))
        return failure(Error::posix(EINVAL, "Not a regular file: " + path.string()));

    std::string content;
    std::size_t length = 0;
    content.resize(static_cast<std::size_t>(info.st_size) + 1); // the last byte finds the end in one go
    for (;;) {
        const ssize_t count = ::read(file.get(), content.data() + length, content.size() - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return posixFailure("Reading " + path.string());
        length += static_cast<std::size_t>(count);
        if (count == 0)
            break;
        if (length == content.size())
            content.resize(2 * length);
    }
    content.resize(length);
    return content;
}

} // namespace glimmerly

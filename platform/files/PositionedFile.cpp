#include "platform/files/PositionedFile.h"

#include <unistd.h>

#include <cerrno>

namespace glimmerly {

Result<void> writeAt(const FileDescriptor& file, std::span<const std::byte> bytes, std::size_t offset) {
    while (!bytes.empty()) {
        const ssize_t written = ::pwrite(file.get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (written < 0 && errno != EINTR)
            return posixFailure("Writing a file");
        const auto count = static_cast<std::size_t>(written < 0 ? 0 : written);
        bytes = bytes.subspan(count);
        offset += count;
    }
    return {};
}

Result<std::size_t> readAt(const FileDescriptor& file, std::span<std::byte> bytes, std::size_t offset) {
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = ::pread(file.get(), bytes.data() + filled, bytes.size() - filled,
                                      static_cast<off_t>(offset + filled));
        if (count == 0)
            break;
        if (count > 0)
            filled += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return posixFailure("Reading a file");
    }
    return filled;
}

} // namespace glimmerly

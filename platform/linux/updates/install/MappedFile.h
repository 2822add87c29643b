#pragma once

#include "platform/files/FileDescriptor.h"

#include <cstddef>
#include <span>

namespace glimmerly {

/// All of an open file as bytes in memory. Nobody else may shorten the file meanwhile.
class MappedFile {
public:
    [[nodiscard]] static Result<MappedFile> of(const FileDescriptor& file, std::size_t size);
    MappedFile(MappedFile&& other) noexcept : bytes_(std::exchange(other.bytes_, {})) {}
    MappedFile& operator=(MappedFile&&) = delete;
    ~MappedFile();

    [[nodiscard]] std::span<const std::byte> bytes() const { return bytes_; }

private:
    explicit MappedFile(std::span<const std::byte> bytes) : bytes_(bytes) {}

    std::span<const std::byte> bytes_;
};

} // namespace glimmerly

#pragma once

#include "base/Result.h"
#include "platform/files/FileDescriptor.h"

#include <cstddef>
#include <span>

namespace glimmerly {

/// The bytes of a PNG file, on disk or in memory. Read from several threads at a time.
class PngSource {
public:
    PngSource(FileDescriptor file, std::size_t size) : file_(std::move(file)), size_(size) {}
    explicit PngSource(std::span<const std::byte> memory) : memory_(memory), size_(memory.size()) {}

    [[nodiscard]] std::size_t size() const { return size_; }

    /// The bytes from `offset` on, as many as `scratch` has room for or the source still has; they stand in
    /// `scratch` or, for a source in memory, where they are.
    [[nodiscard]] Result<std::span<const std::byte>> read(std::size_t offset,
                                                          std::span<std::byte> scratch) const;

private:
    FileDescriptor file_;
    std::span<const std::byte> memory_;
    std::size_t size_;
};

} // namespace glimmerly

#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace glimmerly {

/// Bytes in memory, not initialised when made: for megabytes that are about to be written over.
class ByteBuffer {
public:
    ByteBuffer() = default;
    explicit ByteBuffer(std::size_t size)
        : bytes_(std::make_unique_for_overwrite<std::byte[]>(size)), size_(size) {}

    [[nodiscard]] std::byte* data() { return bytes_.get(); }
    [[nodiscard]] const std::byte* data() const { return bytes_.get(); }
    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] std::span<std::byte> span() { return {bytes_.get(), size_}; }
    [[nodiscard]] std::span<const std::byte> span() const { return {bytes_.get(), size_}; }

    /// Forgets all but the first `size` bytes; the memory stays.
    void truncate(std::size_t size) { size_ = size < size_ ? size : size_; }

private:
    std::unique_ptr<std::byte[]> bytes_;
    std::size_t size_ = 0;
};

} // namespace glimmerly

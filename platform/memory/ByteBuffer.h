#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace glimmerly {

/// Bytes in memory, not initialised when made: for what is about to be written over. A large buffer asks for
/// huge pages, because touching 33 MB in small ones for the first time takes 8100 page faults, which cost
/// more than the work on them.
class ByteBuffer {
public:
    ByteBuffer() = default;
    /// Throws std::bad_alloc when there is no memory.
    explicit ByteBuffer(std::size_t size);

    [[nodiscard]] std::byte* data() { return bytes_.get(); }
    [[nodiscard]] const std::byte* data() const { return bytes_.get(); }
    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] std::span<std::byte> span() { return {bytes_.get(), size_}; }
    [[nodiscard]] std::span<const std::byte> span() const { return {bytes_.get(), size_}; }
    /// The same memory as the unsigned characters that C libraries take.
    [[nodiscard]] std::uint8_t* octets() { return reinterpret_cast<std::uint8_t*>(bytes_.get()); }

    /// Forgets all but the first `size` bytes; the memory stays.
    void truncate(std::size_t size) { size_ = size < size_ ? size : size_; }

private:
    struct Release {
        std::size_t mappedSize; ///< 0: from the heap
        void operator()(std::byte* bytes) const;
    };
    std::unique_ptr<std::byte[], Release> bytes_{nullptr, Release{0}};
    std::size_t size_ = 0;
};

} // namespace glimmerly

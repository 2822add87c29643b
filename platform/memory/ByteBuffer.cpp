#include "platform/memory/ByteBuffer.h"

#include <sys/mman.h>

#include <new>

namespace glimmerly {

namespace {

constexpr std::size_t hugePage = std::size_t{2} << 20;
constexpr std::size_t worthMapping = hugePage / 2;

constexpr std::size_t roundedUp(std::size_t size) {
    return (size + hugePage - 1) / hugePage * hugePage;
}

/// `size` bytes of fresh memory that start where a huge page may; `size` is a multiple of one.
std::byte* mapHugePages(std::size_t size) {
    const std::size_t reserved = size + hugePage;
    void* mapping = ::mmap(nullptr, reserved, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED)
        throw std::bad_alloc();
    auto* start = static_cast<std::byte*>(mapping);
    const std::size_t before =
        roundedUp(reinterpret_cast<std::uintptr_t>(start)) - reinterpret_cast<std::uintptr_t>(start);
    if (before > 0)
        ::munmap(start, before);
    ::munmap(start + before + size, hugePage - before);
    ::madvise(start + before, size, MADV_HUGEPAGE); // small pages do as well where this is refused
    return start + before;
}

} // namespace

ByteBuffer::ByteBuffer(std::size_t size) : size_(size) {
    if (size < worthMapping)
        bytes_ = {new std::byte[size], Release{0}};
    else
        bytes_ = {mapHugePages(roundedUp(size)), Release{roundedUp(size)}};
}

void ByteBuffer::Release::operator()(std::byte* bytes) const {
    if (mappedSize == 0)
        delete[] bytes;
    else
        ::munmap(bytes, mappedSize);
}

} // namespace glimmerly

#include "platform/png/PngSource.h"

#include "platform/files/PositionedFile.h"

#include <algorithm>

namespace glimmerly {

Result<std::span<const std::byte>> PngSource::read(std::size_t offset, std::span<std::byte> scratch) const {
    const std::size_t left = size_ - std::min(size_, offset);
    scratch = scratch.first(std::min(scratch.size(), left));
    if (!file_)
        return memory_.subspan(size_ - left, scratch.size());
    const auto count = readAt(file_, scratch, offset);
    if (!count)
        return failure(count.error());
    return scratch.first(*count);
}

} // namespace glimmerly

#pragma once

#include "platform/files/FileDescriptor.h"

#include <cstddef>
#include <span>

namespace glimmerly {

/// Writes all of `bytes` from `offset` on. Threads may write different parts of one file at a time.
[[nodiscard]] Result<void> writeAt(const FileDescriptor& file, std::span<const std::byte> bytes,
                                   std::size_t offset);

/// Fills `bytes` from `offset` on as far as the file reaches; answers how many there were.
[[nodiscard]] Result<std::size_t> readAt(const FileDescriptor& file, std::span<std::byte> bytes,
                                         std::size_t offset);

} // namespace glimmerly

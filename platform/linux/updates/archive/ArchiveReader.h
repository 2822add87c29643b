#pragma once

#include "base/Result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace glimmerly {

/// More than any version of the program has.
struct ArchiveLimits {
    std::size_t entries = 20'000;
    std::uint64_t unpacked = 1u << 30; ///< bytes, of all files together
};

enum class FileUse { data, program };

/// What an archive holds, told in its order. Paths are relative, of printable ASCII, without empty, "." and
/// ".." components, and without the folder that all of the archive lies in.
class ArchiveContents {
public:
    virtual ~ArchiveContents() = default;

    [[nodiscard]] virtual Result<void> addDirectory(const std::string& path) = 0;
    [[nodiscard]] virtual Result<void> beginFile(const std::string& path, FileUse use) = 0;
    [[nodiscard]] virtual Result<void> addBytes(std::span<const std::byte> bytes) = 0;
    [[nodiscard]] virtual Result<void> endFile() = 0;
};

/// Reads a tar archive, compressed with gzip or zstd, of files and directories in one folder. An error when
/// it is none, damaged, beyond `limits`, or holds anything else: links, devices, paths that lead out
/// of the folder. What was told until then is to be thrown away.
[[nodiscard]] Result<void> readArchive(std::span<const std::byte> archive, ArchiveContents& contents,
                                       const ArchiveLimits& limits = {});

} // namespace glimmerly

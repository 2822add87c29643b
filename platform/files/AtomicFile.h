#pragma once

#include "base/Result.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <span>

namespace glimmerly {

class FileDescriptor;

/// Whose directory a file is written to, which decides what may be found on the way there.
enum class Destination {
    /// Ours alone: the file gets mode 0600 whatever the umask, a directory that is a link, another user's or
    /// open to others' writing is refused, and the file is not forced to the disk.
    ownDirectory,
    /// Picked by the user: the directory may be a link, a file replaced passes its mode on to the new one
    /// (which otherwise gets what the umask leaves), and the bytes are on the disk before the name is.
    chosenByUser,
};

using Bytes = std::span<const std::byte>;

/// Makes `pieces`, one after the other, the content of the file `path`. It replaces what had that name in one
/// step, a link itself and not what the link points to; on failure that stays as it was and nothing is left
/// behind. The directory must exist.
[[nodiscard]] Result<void> writeFileAtomically(const std::filesystem::path& path,
                                               std::span<const Bytes> pieces,
                                               Destination destination = Destination::ownDirectory);
[[nodiscard]] Result<void> writeFileAtomically(const std::filesystem::path& path, Bytes content,
                                               Destination destination = Destination::ownDirectory);

/// The same for content that `fill` writes into the empty file it is given; a failure of it is the outcome.
using FileFiller = std::function<Result<void>(const FileDescriptor& file)>;
[[nodiscard]] Result<void> writeFileAtomically(const std::filesystem::path& path, const FileFiller& fill,
                                               Destination destination = Destination::ownDirectory);

} // namespace glimmerly

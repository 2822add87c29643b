#include "platform/linux/updates/install/FolderExchange.h"

#include "platform/files/FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace glimmerly {

Result<void> exchangeFolders(const std::filesystem::path& one, const std::filesystem::path& other) {
    if (::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) != 0)
        return posixFailure("Exchanging " + one.string() + " and " + other.string());
    forceToDisk(one.parent_path());
    forceToDisk(other.parent_path());
    return {};
}

void forceToDisk(const std::filesystem::path& directory) {
    const FileDescriptor opened(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened)
        (void)::fsync(opened.get());
}

} // namespace glimmerly

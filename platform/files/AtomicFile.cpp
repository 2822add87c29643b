#include "platform/files/AtomicFile.h"

#include "platform/files/FileDescriptor.h"
#include "platform/files/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <optional>
#include <vector>

namespace glimmerly {

namespace {

namespace fs = std::filesystem;

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t asUmaskAllows = ownerOnly | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;

bool isOurs(const FileDescriptor& directory) {
    struct stat info{};
    return ::fstat(directory.get(), &info) == 0 && info.st_uid == ::geteuid() &&
           (info.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

Result<FileDescriptor> openParent(const fs::path& path, Destination destination) {
    const fs::path parent = path.has_parent_path() ? path.parent_path() : fs::path(".");
    const int links = destination == Destination::ownDirectory ? O_NOFOLLOW : 0;
    FileDescriptor directory(::open(parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC | links));
    if (!directory)
        return posixFailure("Opening the directory " + parent.string());
    if (destination == Destination::ownDirectory && !isOurs(directory))
        return failure(Error::posix(EPERM, "The directory " + parent.string() + " is not ours alone"));
    return directory;
}

std::vector<iovec> vectorsOf(std::span<const Bytes> pieces) {
    std::vector<iovec> vectors;
    for (const Bytes piece : pieces) {
        if (!piece.empty())
            vectors.push_back({const_cast<std::byte*>(piece.data()), piece.size()});
    }
    return vectors;
}

/// Takes the first `count` bytes off `vectors`.
std::span<iovec> advanced(std::span<iovec> vectors, std::size_t count) {
    while (!vectors.empty() && count >= vectors.front().iov_len) {
        count -= vectors.front().iov_len;
        vectors = vectors.subspan(1);
    }
    if (count > 0) {
        vectors.front().iov_base = static_cast<std::byte*>(vectors.front().iov_base) + count;
        vectors.front().iov_len -= count;
    }
    return vectors;
}

Result<void> writeAll(const FileDescriptor& file, std::span<const Bytes> pieces) {
    std::vector<iovec> vectors = vectorsOf(pieces);
    std::span<iovec> rest = vectors;
    while (!rest.empty()) {
        const auto count = static_cast<int>(std::min<std::size_t>(rest.size(), IOV_MAX));
        const ssize_t written = ::writev(file.get(), rest.data(), count);
        if (written >= 0)
            rest = advanced(rest, static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return posixFailure("Writing a file");
    }
    return {};
}

/// The mode that the new file is given whatever the umask, or none where the umask has its say.
std::optional<mode_t> fixedMode(const FileDescriptor& directory, const std::string& name,
                                Destination destination) {
    if (destination == Destination::ownDirectory)
        return ownerOnly;
    struct stat replaced{};
    if (::fstatat(directory.get(), name.c_str(), &replaced, AT_SYMLINK_NOFOLLOW) == 0 &&
        S_ISREG(replaced.st_mode))
        return replaced.st_mode & ACCESSPERMS;
    return std::nullopt;
}

Result<void> complete(const FileDescriptor& file, std::optional<mode_t> mode, const FileFiller& fill,
                      Destination destination) {
    if (mode && ::fchmod(file.get(), *mode) != 0)
        return posixFailure("Setting a file's mode");
    if (auto written = fill(file); !written)
        return written;
    if (destination == Destination::chosenByUser && ::fsync(file.get()) != 0)
        return posixFailure("Forcing a file to the disk");
    return {};
}

} // namespace

Result<void> writeFileAtomically(const fs::path& path, const FileFiller& fill, Destination destination) {
    const auto directory = openParent(path, destination);
    if (!directory)
        return failure(directory.error());
    const std::string name = path.filename().string();
    const auto mode = fixedMode(*directory, name, destination);
    auto temporary = TemporaryFile::create(*directory, mode ? ownerOnly : asUmaskAllows);
    if (!temporary)
        return failure(temporary.error());
    if (auto completed = complete(temporary->file(), mode, fill, destination); !completed)
        return completed;
    return temporary->publish(name);
}

Result<void> writeFileAtomically(const fs::path& path, std::span<const Bytes> pieces,
                                 Destination destination) {
    const auto fill = [pieces](const FileDescriptor& file) { return writeAll(file, pieces); };
    return writeFileAtomically(path, FileFiller(fill), destination);
}

Result<void> writeFileAtomically(const fs::path& path, Bytes content, Destination destination) {
    return writeFileAtomically(path, std::span(&content, 1), destination);
}

} // namespace glimmerly

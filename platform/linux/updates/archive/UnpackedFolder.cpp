#include "platform/linux/updates/archive/UnpackedFolder.h"

#include "platform/files/PositionedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace glimmerly {

namespace {

constexpr int openDirectory = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr mode_t dataMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;
constexpr mode_t programMode = dataMode | S_IXUSR | S_IXGRP | S_IXOTH;

std::string lastComponent(const std::string& path) {
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

} // namespace

Result<UnpackedFolder> UnpackedFolder::open(const std::filesystem::path& folder) {
    FileDescriptor opened(::open(folder.c_str(), openDirectory));
    if (!opened)
        return posixFailure("Opening " + folder.string());
    return UnpackedFolder(std::move(opened));
}

Result<FileDescriptor> UnpackedFolder::parentOf(const std::string& path) const {
    FileDescriptor directory(::openat(folder_.get(), ".", openDirectory));
    std::size_t begin = 0;
    for (auto end = path.find('/'); directory && end != path.npos; end = path.find('/', begin)) {
        const std::string name = path.substr(begin, end - begin);
        begin = end + 1;
        if (::mkdirat(directory.get(), name.c_str(), programMode) != 0 && errno != EEXIST)
            return posixFailure("Making the folder " + name);
        directory = FileDescriptor(::openat(directory.get(), name.c_str(), openDirectory));
    }
    if (!directory)
        return posixFailure("Opening a folder for " + path);
    return directory;
}

Result<void> UnpackedFolder::addDirectory(const std::string& path) {
    auto parent = parentOf(path + "/");
    if (!parent)
        return failure(parent.error());
    return {};
}

Result<void> UnpackedFolder::beginFile(const std::string& path, FileUse use) {
    const auto parent = parentOf(path);
    if (!parent)
        return failure(parent.error());
    const mode_t mode = use == FileUse::program ? programMode : dataMode;
    file_ = FileDescriptor(::openat(parent->get(), lastComponent(path).c_str(),
                                    O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    written_ = 0;
    if (!file_)
        return posixFailure("Creating " + path);
    return {};
}

Result<void> UnpackedFolder::addBytes(std::span<const std::byte> bytes) {
    auto outcome = writeAt(file_, bytes, written_);
    written_ += bytes.size();
    return outcome;
}

Result<void> UnpackedFolder::endFile() {
    return file_.close();
}

Result<void> UnpackedFolder::synchronize() {
    if (::syncfs(folder_.get()) != 0)
        return posixFailure("Writing the update to the disk");
    return {};
}

} // namespace glimmerly

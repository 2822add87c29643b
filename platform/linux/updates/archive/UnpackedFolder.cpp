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

Result<UnpackedFolder> UnpackedFolder::open(const std::filesystem::path& folder, std::stop_token stop) {
    FileDescriptor opened(::open(folder.c_str(), openDirectory));
    if (!opened)
        return posixFailure("Opening " + folder.string());
    return UnpackedFolder(std::move(opened), std::move(stop));
}

Result<FileDescriptor> UnpackedFolder::parentOf(const std::string& path) const {
    if (auto wanted = goOn(); !wanted)
        return failure(wanted.error());
    FileDescriptor directory(::openat(folder_.get(), ".", openDirectory));
    std::size_t begin = 0;
    for (auto end = path.find('/'); directory && end != std::string::npos; end = path.find('/', begin)) {
        const std::string name = path.substr(begin, end - begin);
        begin = end + 1;
        const bool isNew = ::mkdirat(directory.get(), name.c_str(), programMode) == 0;
        if (!isNew && errno != EEXIST)
            return posixFailure("Making the folder " + name);
        directory = FileDescriptor(::openat(directory.get(), name.c_str(), openDirectory));
        if (isNew && directory)
            (void)::fchmod(directory.get(), programMode);
    }
    if (!directory)
        return posixFailure("Opening a folder for " + path);
    return directory;
}

Result<void> UnpackedFolder::goOn() const {
    if (stop_.stop_requested())
        return failure(Error::posix(ECANCELED, "Unpacking"));
    return {};
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
    // Whatever the umask of who updates it: others may start the program too.
    if (!file_ || ::fchmod(file_.get(), mode) != 0)
        return posixFailure("Creating " + path);
    return {};
}

Result<void> UnpackedFolder::addBytes(std::span<const std::byte> bytes) {
    if (auto wanted = goOn(); !wanted)
        return wanted;
    auto outcome = writeAt(file_, bytes, written_);
    written_ += bytes.size();
    return outcome;
}

Result<void> UnpackedFolder::endFile() {
    // Of this file alone: all that waits to be written on the whole file system would hold a stop up.
    if (::fsync(file_.get()) != 0)
        return posixFailure("Writing the update to the disk");
    return file_.close();
}

} // namespace glimmerly

#include "platform/files/Directories.h"

#include "platform/files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <string>

namespace glimmerly {

namespace {

namespace fs = std::filesystem;

constexpr mode_t ownerOnly = S_IRWXU;

std::optional<fs::path> absolutePathIn(const char* variable) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value != '/')
        return std::nullopt;
    return fs::path(value);
}

std::optional<fs::path> userDirectory(const char* variable, std::string_view belowHome) {
    if (auto set = absolutePathIn(variable))
        return set;
    if (const auto home = absolutePathIn("HOME"))
        return *home / belowHome;
    return std::nullopt;
}

Result<void> makeDirectory(const fs::path& path) {
    if (::mkdir(path.c_str(), ownerOnly) != 0) {
        if (errno == EEXIST)
            return {};
        return posixFailure("Making the directory " + path.string());
    }
    // The umask may have taken bits of the owner's own away.
    if (::fchmodat(AT_FDCWD, path.c_str(), ownerOnly, AT_SYMLINK_NOFOLLOW) != 0)
        return posixFailure("Opening up the directory " + path.string());
    return {};
}

Result<FileDescriptor> makeAndOpenDirectory(const fs::path& path) {
    if (auto made = makeDirectory(path); !made)
        return failure(made.error());
    FileDescriptor directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!directory)
        return posixFailure("Opening the directory " + path.string());
    return directory;
}

/// What to do with a directory of ours that others may enter: in a place of our own it is closed to them; in
/// a place shared with them it is refused, since they may already have put things into it.
enum class Place { own, shared };

Result<fs::path> exclusiveDirectory(fs::path path, Place place) {
    const auto directory = makeAndOpenDirectory(path);
    if (!directory)
        return failure(directory.error());
    struct stat info{};
    if (::fstat(directory->get(), &info) != 0)
        return posixFailure("Examining the directory " + path.string());
    if (info.st_uid != ::geteuid())
        return failure(Error::posix(EPERM, "The directory " + path.string() + " is another user's"));
    if ((info.st_mode & ALLPERMS) == ownerOnly)
        return path;
    if (place == Place::shared)
        return failure(Error::posix(EPERM, "The directory " + path.string() + " is open to others"));
    if (::fchmod(directory->get(), ownerOnly) != 0)
        return posixFailure("Closing the directory " + path.string() + " to others");
    return path;
}

} // namespace

std::optional<fs::path> applicationSupportDirectory() {
    return userDirectory("XDG_DATA_HOME", ".local/share");
}

std::optional<fs::path> configurationDirectory() {
    return userDirectory("XDG_CONFIG_HOME", ".config");
}

std::vector<fs::path> configurationSearchPath() {
    std::vector<fs::path> places;
    if (const auto own = configurationDirectory())
        places.push_back(*own);
    const char* set = std::getenv("XDG_CONFIG_DIRS");
    std::istringstream directories(set != nullptr && *set != '\0' ? set : "/etc/xdg");
    for (std::string directory; std::getline(directories, directory, ':');) {
        if (directory.starts_with('/'))
            places.emplace_back(directory);
    }
    return places;
}

fs::path temporaryDirectoryLocation() {
    if (const auto runtime = absolutePathIn("XDG_RUNTIME_DIR"))
        return *runtime / bundleIdentifier;
    const fs::path name = std::string(bundleIdentifier) + "-" + std::to_string(::geteuid());
    return absolutePathIn("TMPDIR").value_or("/tmp") / name;
}

Result<fs::path> temporaryDirectory() {
    return exclusiveDirectory(temporaryDirectoryLocation(),
                              absolutePathIn("XDG_RUNTIME_DIR") ? Place::own : Place::shared);
}

Result<void> makeDirectories(const fs::path& path) {
    fs::path reached;
    for (const auto& component : path) {
        reached /= component;
        if (auto made = makeDirectory(reached); !made)
            return made;
    }
    struct stat info{};
    if (::stat(path.c_str(), &info) != 0)
        return posixFailure("Examining the directory " + path.string());
    if (!S_ISDIR(info.st_mode))
        return failure(Error::posix(ENOTDIR, path.string()));
    return {};
}

Result<void> makePrivateDirectory(const fs::path& path) {
    if (const auto directory = exclusiveDirectory(path, Place::own); !directory)
        return failure(directory.error());
    return {};
}

} // namespace glimmerly

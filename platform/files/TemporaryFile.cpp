#include "platform/files/TemporaryFile.h"

#include "base/Uuid.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <functional>

namespace glimmerly {

namespace {

std::string temporaryName(std::string_view distinction) {
    return ".glimmerly-" + std::string(distinction) + ".tmp";
}

/// The same for every file that is to be called `target`: what a process killed between the link and the
/// rename left under it, the next one to write the file takes away.
std::string stagingName(const std::string& target) {
    return temporaryName(std::to_string(std::hash<std::string>{}(target)));
}

} // namespace

Result<TemporaryFile> TemporaryFile::create(const FileDescriptor& directory, mode_t mode, Naming naming) {
    if (naming == Naming::whenPublished) {
        FileDescriptor file(::openat(directory.get(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
        if (file)
            return TemporaryFile(directory, std::move(file), {});
        if (errno != EOPNOTSUPP && errno != EISDIR)
            return posixFailure("Creating a temporary file");
    }
    std::string name = temporaryName(Uuid::generate().toString());
    FileDescriptor file(
        ::openat(directory.get(), name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!file)
        return posixFailure("Creating a temporary file");
    return TemporaryFile(directory, std::move(file), std::move(name));
}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept
    : directory_(other.directory_), file_(std::move(other.file_)), name_(std::exchange(other.name_, {})) {}

TemporaryFile::~TemporaryFile() {
    if (!name_.empty())
        ::unlinkat(directory_->get(), name_.c_str(), 0);
}

Result<void> TemporaryFile::giveName(std::string name) {
    const std::string self = "/proc/self/fd/" + std::to_string(file_.get());
    const auto link = [&] {
        return ::linkat(AT_FDCWD, self.c_str(), directory_->get(), name.c_str(), AT_SYMLINK_FOLLOW);
    };
    int linked = link();
    if (linked != 0 && errno == EEXIST && ::unlinkat(directory_->get(), name.c_str(), 0) == 0)
        linked = link();
    if (linked != 0)
        return posixFailure("Naming a temporary file");
    name_ = std::move(name);
    return {};
}

Result<void> TemporaryFile::publish(const std::string& name) {
    // A link never replaces a file that exists, so the way to the final name is over one of our own.
    if (name_.empty()) {
        if (auto named = giveName(stagingName(name)); !named)
            return named;
    }
    if (::renameat(directory_->get(), name_.c_str(), directory_->get(), name.c_str()) != 0)
        return posixFailure("Putting the file in the place of " + name);
    name_.clear();
    return {};
}

} // namespace glimmerly

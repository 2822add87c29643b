#pragma once

#include "platform/files/FileDescriptor.h"

#include <sys/types.h>

#include <string>

namespace glimmerly {

/// A file on its way to its name. It goes away with this object unless `publish` was called, and where the
/// file system can do it with the process too, however that ends: until then it has no name at all.
class TemporaryFile {
public:
    /// `whenPublished` leaves no trace of a process killed half-way; not every file system can do it.
    enum class Naming { whenPublished, atOnce };

    /// A new empty file in the open directory `directory`, which must outlive it. `mode` is what the umask
    /// is applied to.
    [[nodiscard]] static Result<TemporaryFile> create(const FileDescriptor& directory, mode_t mode,
                                                      Naming naming = Naming::whenPublished);
    TemporaryFile(TemporaryFile&& other) noexcept;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    ~TemporaryFile();

    [[nodiscard]] const FileDescriptor& file() const { return file_; }
    /// Puts the file in the place of whatever is called `name` in its directory, in one step.
    [[nodiscard]] Result<void> publish(const std::string& name);

private:
    TemporaryFile(const FileDescriptor& directory, FileDescriptor file, std::string name)
        : directory_(&directory), file_(std::move(file)), name_(std::move(name)) {}

    Result<void> giveName(std::string name);

    const FileDescriptor* directory_;
    FileDescriptor file_;
    std::string name_; // empty: it has none, or no longer one of ours
};

} // namespace glimmerly

#pragma once

#include "platform/files/FileDescriptor.h"

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace glimmerly {

/// Tells one state of a file from another: which file it is, its length and when it was last changed.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modifiedNanoseconds = 0;

    [[nodiscard]] bool isSameFile(const FileStamp& other) const {
        return device == other.device && inode == other.inode;
    }
    bool operator==(const FileStamp&) const = default;
};

/// The stamp of what has the name `path`, a link itself rather than its target.
[[nodiscard]] Result<FileStamp> stampOf(const std::filesystem::path& path);

/// A file open for adding to its end.
class AppendFile {
public:
    /// Opens `path`, made when missing, with mode 0600 whatever the umask. A link in its place, or anything
    /// but a regular file, is an error.
    [[nodiscard]] static Result<AppendFile> open(const std::filesystem::path& path);

    /// Adds `text` in one call to the system, whole or not at all: what a full disk cut short is taken back.
    [[nodiscard]] Result<void> append(std::string_view text);
    [[nodiscard]] Result<FileStamp> stamp() const;
    /// Forces the content to stable storage.
    [[nodiscard]] Result<void> synchronize();
    /// Not usable afterwards, also when the system reports a failure.
    [[nodiscard]] Result<void> close() { return file_.close(); }

private:
    explicit AppendFile(FileDescriptor file) : file_(std::move(file)) {}
    void takeBack(std::size_t count);

    FileDescriptor file_;
};

} // namespace glimmerly

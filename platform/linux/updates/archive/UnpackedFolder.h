#pragma once

#include "platform/files/FileDescriptor.h"
#include "platform/linux/updates/archive/ArchiveReader.h"

#include <filesystem>

namespace glimmerly {

/// Writes what an archive holds into a folder that is empty and ours. Nothing that exists is written to, and
/// no link is followed.
class UnpackedFolder final : public ArchiveContents {
public:
    [[nodiscard]] static Result<UnpackedFolder> open(const std::filesystem::path& folder);

    [[nodiscard]] Result<void> addDirectory(const std::string& path) override;
    [[nodiscard]] Result<void> beginFile(const std::string& path, FileUse use) override;
    [[nodiscard]] Result<void> addBytes(std::span<const std::byte> bytes) override;
    [[nodiscard]] Result<void> endFile() override;
    /// Forces all of it to stable storage.
    [[nodiscard]] Result<void> synchronize();

private:
    explicit UnpackedFolder(FileDescriptor folder) : folder_(std::move(folder)) {}
    /// The directory that `path` lies in, made when missing.
    [[nodiscard]] Result<FileDescriptor> parentOf(const std::string& path) const;

    FileDescriptor folder_;
    FileDescriptor file_; ///< the one being written
    std::size_t written_ = 0;
};

} // namespace glimmerly

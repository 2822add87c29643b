#pragma once

#include "platform/files/FileDescriptor.h"
#include "platform/linux/updates/archive/ArchiveReader.h"

#include <filesystem>
#include <stop_token>

namespace glimmerly {

/// Writes what an archive holds into a folder that is empty and ours, each file to stable storage. Nothing
/// that exists is written to, and no link is followed.
class UnpackedFolder final : public ArchiveContents {
public:
    /// Once `stop` is requested every step fails.
    [[nodiscard]] static Result<UnpackedFolder> open(const std::filesystem::path& folder,
                                                     std::stop_token stop = {});

    [[nodiscard]] Result<void> addDirectory(const std::string& path) override;
    [[nodiscard]] Result<void> beginFile(const std::string& path, FileUse use) override;
    [[nodiscard]] Result<void> addBytes(std::span<const std::byte> bytes) override;
    [[nodiscard]] Result<void> endFile() override;

private:
    UnpackedFolder(FileDescriptor folder, std::stop_token stop)
        : folder_(std::move(folder)), stop_(std::move(stop)) {}
    [[nodiscard]] Result<void> goOn() const;
    /// The directory that `path` lies in, made when missing.
    [[nodiscard]] Result<FileDescriptor> parentOf(const std::string& path) const;

    FileDescriptor folder_;
    std::stop_token stop_;
    FileDescriptor file_; ///< the one being written
    std::size_t written_ = 0;
};

} // namespace glimmerly

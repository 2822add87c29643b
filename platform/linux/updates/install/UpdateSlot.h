#pragma once

#include "platform/files/FileDescriptor.h"

#include <filesystem>

namespace glimmerly {

/// A folder of our own beside the installed one, on the same file system, held by one process at a time. It
/// goes away with this object unless `keep` was called.
class UpdateSlot {
public:
    enum class WhenHeld { fail, wait }; ///< by another process
    /// The name in it under which a whole version lies, and nothing else at any moment.
    static constexpr auto version = "version";

    /// The folder `path`, made when missing. An error when what stands there is a link, another user's, or
    /// open to others' writing.
    [[nodiscard]] static Result<UpdateSlot> claim(const std::filesystem::path& path,
                                                  WhenHeld whenHeld = WhenHeld::fail);
    UpdateSlot(UpdateSlot&& other) noexcept = default;
    UpdateSlot& operator=(UpdateSlot&&) = delete;
    ~UpdateSlot();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] const FileDescriptor& directory() const { return directory_; }
    /// Takes away what lies in it.
    [[nodiscard]] Result<void> clear();
    /// Leaves what the slot holds to the next version's start.
    void keep() { isKept_ = true; }
    void doNotKeep() { isKept_ = false; }

private:
    /// Takes the name away first: what a killed process leaves of a version must not be taken for one.
    void removeVersion();
    UpdateSlot(std::filesystem::path path, FileDescriptor directory)
        : path_(std::move(path)), directory_(std::move(directory)) {}

    std::filesystem::path path_;
    FileDescriptor directory_; ///< locked; none in an object that was moved from
    bool isKept_ = false;
};

} // namespace glimmerly

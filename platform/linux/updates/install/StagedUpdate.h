#pragma once

#include "platform/linux/updates/install/InstalledFolder.h"
#include "platform/linux/updates/install/UpdateSlot.h"
#include "platform/memory/ByteBuffer.h"

#include <cstdint>
#include <span>
#include <stop_token>

namespace glimmerly {

/// The archive of an update while it arrives: a file without a name beside the installed folder.
class ArrivingArchive {
public:
    [[nodiscard]] static Result<ArrivingArchive> create(const UpdateSlot& slot);

    [[nodiscard]] Result<void> add(std::span<const std::byte> bytes);
    [[nodiscard]] std::uint64_t size() const { return size_; }
    /// All that has arrived, in memory: what is checked there and then unpacked are the same bytes, and a
    /// disk that fails is an error.
    [[nodiscard]] Result<ByteBuffer> read() const;

private:
    explicit ArrivingArchive(FileDescriptor file) : file_(std::move(file)) {}

    FileDescriptor file_;
    std::uint64_t size_ = 0;
};

/// A newer version, made ready beside the installed one and put in its place in one step: whenever the
/// process is killed, or the machine, the folder holds one version or the other, whole.
class StagedUpdate {
public:
    /// An error when the file system cannot exchange two folders in one step, and when a version newer than
    /// `runningVersion` is installed, which needs the one that is kept until it has started.
    [[nodiscard]] static Result<StagedUpdate> begin(const InstalledFolder& installed,
                                                    const std::string& runningVersion);

    [[nodiscard]] const UpdateSlot& slot() const { return slot_; }
    /// Unpacks `archive` and forces it to the disk; afterwards there is a version to be installed. An error
    /// soon after `stop` is requested.
    [[nodiscard]] Result<void> unpack(std::span<const std::byte> archive, const std::stop_token& stop = {});
    /// The version that was unpacked; none without one or without its program.
    [[nodiscard]] std::optional<std::string> version() const;

    /// Has the unpacked version's program check itself; an error unless it works here.
    [[nodiscard]] Result<void> check(const std::stop_token& stop = {}) const;

    /// Puts the unpacked version in the place of the installed one, which is kept. An error when that is
    /// not older, because another process has updated it meanwhile.
    [[nodiscard]] Result<void> install();
    /// Takes that back.
    [[nodiscard]] Result<void> revert();

private:
    StagedUpdate(InstalledFolder installed, UpdateSlot slot)
        : installed_(std::move(installed)), slot_(std::move(slot)) {}

    InstalledFolder installed_;
    UpdateSlot slot_;
};

} // namespace glimmerly

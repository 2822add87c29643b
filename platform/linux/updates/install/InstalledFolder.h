#pragma once

#include "base/Result.h"
#include "platform/linux/updates/install/UpdateSlot.h"

#include <filesystem>
#include <optional>
#include <string>

namespace glimmerly {

/// Whether a version of the program can put another in its own place.
enum class Replaceability {
    replaceable,
    managedElsewhere, ///< it was not unpacked from an archive of ours: a package manager, or its developer,
                      ///< has it
    inSharedFolder,   ///< there are other files in its folder, which would be lost
    notWritable,      ///< the user may not write there
    notExchangeable,  ///< a file system is mounted there, which holds the folder's name
};

/// The folder that a version of the program was unpacked into.
class InstalledFolder {
public:
    /// The program within the folder.
    static constexpr auto program = "bin/glimmerly";
    /// What only an archive's folder has: a file with the version as its first line, and then all files of
    /// the archive, itself included, a line each.
    static constexpr auto contentsFile = "share/glimmerly/archive-contents";

    /// `executable` is where the program lies.
    explicit InstalledFolder(std::filesystem::path executable);
    /// That of this process. To be asked when it begins: an update moves the file that it runs from.
    [[nodiscard]] static InstalledFolder ofThisProcess();

    [[nodiscard]] const std::filesystem::path& path() const { return folder_; }
    [[nodiscard]] const std::filesystem::path& executable() const { return executable_; }
    /// Beside the folder: where a newer version is made ready, and an older one kept.
    [[nodiscard]] std::filesystem::path slot() const;
    /// In the slot: the newer version until it is installed, from then on the older one.
    [[nodiscard]] std::filesystem::path otherVersion() const { return slot() / UpdateSlot::version; }
    /// In the slot: a newer version that was installed, did not start, and was taken back.
    [[nodiscard]] std::filesystem::path failedVersion() const { return slot() / "failed"; }
    [[nodiscard]] bool keepsOlderVersion() const;
    [[nodiscard]] bool isNewerThan(const std::string& version) const;
    [[nodiscard]] Replaceability replaceability() const;

    /// Takes away what an update left beside the folder, unless one is under way: once `startedVersion` has
    /// started, the one before it is not needed any more. Does nothing where another version has been
    /// installed meanwhile. Returns the newer version that did not start, if that is what was left.
    std::optional<std::string> removeLeftovers(const std::string& startedVersion) const;

private:
    std::filesystem::path executable_;
    std::filesystem::path folder_;
};

/// The version in the folder's file; none when there is no such thing.
[[nodiscard]] std::optional<std::string> archiveVersionIn(const std::filesystem::path& folder);

} // namespace glimmerly

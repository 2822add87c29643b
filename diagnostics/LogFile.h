#pragma once

#include "base/Iso8601.h"
#include "platform/files/AppendFile.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace glimmerly {

/// The file that the lines of the log are added to, and removed from when they grow old. Every failure is
/// swallowed: what it costs is a line, or that old lines stay a while longer. Not for several threads.
class LogFile {
public:
    /// `path` is neither made nor opened yet; its directory must exist by then.
    explicit LogFile(std::filesystem::path path) : path_(std::move(path)) {}

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// Opens the file, made when missing, unless it is open. True when it is now.
    bool open();
    /// Adds `line`, which ends with its line feed, to the open file; `time` is the one written in it.
    void append(std::string_view line, UtcTime time);
    /// Removes what is older than `cutoff`, and what is no log line.
    void prune(UtcTime cutoff);
    /// Forces the open file to stable storage.
    void synchronize();

private:
    [[nodiscard]] bool nothingToPrune(UtcTime cutoff) const;
    /// Closes the file when somebody took it away or put another in its place.
    void letGoUnlessInPlace();

    std::filesystem::path path_;
    std::optional<AppendFile> handle_;
    /// The file as this object last left it, and the earliest time in it: as long as nobody else changed it
    /// and that time is not due, pruning would write what is there already. None when not known.
    std::optional<FileStamp> lastLeft_;
    UtcTime oldest_ = UtcTime::max();
};

} // namespace glimmerly

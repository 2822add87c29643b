#include "platform/linux/updates/archive/ArchiveReader.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

namespace glimmerly {

namespace {

constexpr std::size_t chunk = 64u << 10;
constexpr std::size_t longestPath = 1024; // bytes

enum Code { unreadable, forbiddenPath, forbiddenKind, tooLarge };

std::unexpected<Error> refuse(Code code, const std::string& why) {
    return failure(Error("GlimmerlyArchiveError", code, why));
}

struct CloseArchive {
    void operator()(archive* opened) const { (void)::archive_read_free(opened); }
};
using OpenArchive = std::unique_ptr<archive, CloseArchive>;

std::unexpected<Error> unreadableArchive(archive* opened) {
    const char* why = ::archive_error_string(opened);
    return refuse(unreadable, "The archive is damaged: " + std::string(why != nullptr ? why : "unknown"));
}

bool isPlainComponent(std::string_view component) {
    constexpr std::size_t longest = 255;
    return !component.empty() && component.size() <= longest && component != "." && component != ".." &&
           std::ranges::all_of(component, [](char c) { return c >= ' ' && c <= '~'; });
}

bool isPlainPath(std::string_view path) {
    if (path.size() > longestPath)
        return false;
    for (;;) {
        const auto end = path.find('/');
        if (!isPlainComponent(path.substr(0, end)))
            return false;
        if (end == std::string_view::npos)
            return true;
        path.remove_prefix(end + 1);
    }
}

class Reading {
public:
    Reading(archive* opened, ArchiveContents& contents, const ArchiveLimits& limits)
        : archive_(opened), contents_(contents), limits_(limits) {}

    Result<void> all() {
        archive_entry* entry = nullptr;
        for (std::size_t count = 0;; ++count) {
            const int status = ::archive_read_next_header(archive_, &entry);
            if (status == ARCHIVE_EOF)
                return count > 0 ? Result<void>() : refuse(unreadable, "The archive is empty.");
            if (status != ARCHIVE_OK)
                return unreadableArchive(archive_);
            if (count >= limits_.entries)
                return refuse(tooLarge, "The archive has too many entries.");
            if (auto told = tell(entry); !told)
                return told;
        }
    }

private:
    /// Empty for the folder itself.
    Result<std::string> pathOf(archive_entry* entry) {
        const char* stored = ::archive_entry_pathname(entry);
        std::string_view path = stored != nullptr ? stored : "";
        const bool isDirectory = ::archive_entry_filetype(entry) == AE_IFDIR;
        if (isDirectory && path.ends_with('/'))
            path.remove_suffix(1);
        if (!isPlainPath(path))
            return refuse(forbiddenPath, "The archive holds a path that it must not.");
        const auto end = path.find('/');
        const std::string_view folder = path.substr(0, end);
        if (folder_.empty())
            folder_ = folder;
        if (folder != folder_ || (end == std::string_view::npos && !isDirectory))
            return refuse(forbiddenPath, "The archive is not one folder.");
        return end == std::string_view::npos ? std::string() : std::string(path.substr(end + 1));
    }

    Result<void> tell(archive_entry* entry) {
        const auto kind = ::archive_entry_filetype(entry);
        const bool isLink =
            ::archive_entry_hardlink(entry) != nullptr || ::archive_entry_symlink(entry) != nullptr;
        if (isLink || (kind != AE_IFREG && kind != AE_IFDIR))
            return refuse(forbiddenKind, "The archive holds something other than files and folders.");
        const auto path = pathOf(entry);
        if (!path)
            return failure(path.error());
        if (kind == AE_IFDIR)
            return path->empty() ? Result<void>() : contents_.addDirectory(*path);
        const bool isProgram = (::archive_entry_perm(entry) & 0100) != 0;
        return tellFile(*path, isProgram ? FileUse::program : FileUse::data);
    }

    Result<void> tellFile(const std::string& path, FileUse use) {
        if (auto begun = contents_.beginFile(path, use); !begun)
            return begun;
        for (;;) {
            const la_ssize_t count = ::archive_read_data(archive_, buffer_.data(), buffer_.size());
            if (count < 0)
                return unreadableArchive(archive_);
            if (count == 0)
                return contents_.endFile();
            unpacked_ += static_cast<std::uint64_t>(count);
            if (unpacked_ > limits_.unpacked)
                return refuse(tooLarge, "The archive unpacks to too much.");
            if (auto added = contents_.addBytes(std::span(buffer_).first(static_cast<std::size_t>(count)));
                !added)
                return added;
        }
    }

    archive* archive_;
    ArchiveContents& contents_;
    const ArchiveLimits& limits_;
    std::string folder_;
    std::uint64_t unpacked_ = 0;
    std::vector<std::byte> buffer_ = std::vector<std::byte>(chunk);
};

} // namespace

Result<void> readArchive(std::span<const std::byte> archive, ArchiveContents& contents,
                         const ArchiveLimits& limits) {
    const OpenArchive opened(::archive_read_new());
    if (!opened)
        return refuse(unreadable, "There is not enough memory to read the archive.");
    (void)::archive_read_support_format_tar(opened.get());
    (void)::archive_read_support_filter_gzip(opened.get());
    (void)::archive_read_support_filter_zstd(opened.get());
    if (::archive_read_open_memory(opened.get(), archive.data(), archive.size()) != ARCHIVE_OK)
        return unreadableArchive(opened.get());
    return Reading(opened.get(), contents, limits).all();
}

} // namespace glimmerly

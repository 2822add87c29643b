#pragma once

#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace glimmerly {

/// The names of what lies in `directory`, sorted.
inline std::vector<std::string> namesIn(const std::filesystem::path& directory) {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        found.push_back(entry.path().filename().string());
    std::ranges::sort(found);
    return found;
}

/// A new directory, mode 0700, removed with all it holds at the end of its life.
class ScratchDirectory {
public:
    ScratchDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "glimmerly-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no scratch directory at " + name);
        path_ = name;
    }
    ~ScratchDirectory() {
        std::error_code stillBusy;
        std::filesystem::remove_all(path_, stillBusy);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    /// The names of what lies in it, sorted.
    [[nodiscard]] std::vector<std::string> names() const { return namesIn(path_); }

private:
    std::filesystem::path path_;
};

/// The file's bytes; empty when it cannot be read.
inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeContent(const std::filesystem::path& path, std::string_view content) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
}

/// The permission bits of what `path` names, a link itself rather than its target.
inline unsigned modeOf(const std::filesystem::path& path) {
    return static_cast<unsigned>(std::filesystem::symlink_status(path).permissions());
}

} // namespace glimmerly

#include "platform/linux/updates/archive/ArchiveReader.h"
#include "tests/fuzz/Require.h"

#include <filesystem>

using namespace glimmerly;

namespace {

/// Holds the reader to what it promises of paths and of the order of its calls.
class Promises : public ArchiveContents {
public:
    Result<void> addDirectory(const std::string& path) override {
        check(path);
        return {};
    }
    Result<void> beginFile(const std::string& path, FileUse) override {
        check(path);
        isWriting_ = true;
        return {};
    }
    Result<void> addBytes(std::span<const std::byte> bytes) override {
        require(isWriting_ && !bytes.empty());
        constexpr std::size_t enough = 16u << 20; // more only takes time
        written_ += bytes.size();
        return written_ > enough ? failure(Error("enough", 0, "")) : Result<void>();
    }
    Result<void> endFile() override {
        require(isWriting_);
        isWriting_ = false;
        return {};
    }

private:
    void check(const std::filesystem::path& path) const {
        require(!isWriting_ && !path.empty() && path.is_relative() && path == path.lexically_normal());
        for (const auto& component : path)
            require(component != ".." && component != "." && !component.empty());
    }

    bool isWriting_ = false;
    std::size_t written_ = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Promises promises;
    (void)readArchive({reinterpret_cast<const std::byte*>(data), size}, promises);
    return 0;
}

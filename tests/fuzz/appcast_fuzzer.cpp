#include "platform/linux/updates/feed/UpdateChoice.h"
#include "tests/fuzz/Require.h"

using namespace glimmerly;

namespace {

Result<std::vector<AppcastItem>> read(std::string_view feed, std::size_t firstPiece) {
    AppcastReader reader;
    for (const auto piece : {feed.substr(0, firstPiece), feed.substr(firstPiece)}) {
        if (auto added = reader.add(piece); !added)
            return failure(added.error());
    }
    return reader.finish();
}

} // namespace

/// A feed says the same however it arrives, and what it offers is complete.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view feed(reinterpret_cast<const char*>(data), size);
    const auto whole = read(feed, size);
    const auto halves = read(feed, size / 2);
    require(whole.has_value() == halves.has_value());
    if (!whole)
        return 0;
    require(whole->size() == halves->size() && whole->size() <= appcast_limits::items);
    for (const auto& item : *whole)
        require(!item.version.empty() && !item.enclosure.url.empty() && item.enclosure.length > 0 &&
                item.notes.size() <= appcast_limits::text);
    (void)chooseUpdate(
        *whole,
        {.currentVersion = "1.0", .systemVersion = "2.36", .architecture = "x86_64", .skippedVersion = {}});
    return 0;
}

#pragma once

#include "base/Result.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glimmerly {

enum class NotesFormat { plainText, html };
enum class Urgency { normal, critical };

/// The archive that an item of a feed points to.
struct AppcastEnclosure {
    std::string url{};
    std::uint64_t length = 0; ///< bytes
    std::string type{};
    std::string signature{}; ///< Ed25519 over the archive's bytes, Base64
};

/// One version that a feed offers.
struct AppcastItem {
    std::string title{};
    std::string version{};
    std::string shortVersion{}; ///< the version as people know it; empty: `version`
    std::string minimumSystemVersion{};
    std::string architecture{}; ///< empty: every one
    std::string channel{};      ///< empty: for everybody
    std::string notes{};
    NotesFormat notesFormat = NotesFormat::html;
    std::string link{}; ///< the page to fetch it from by hand
    Urgency urgency = Urgency::normal;
    AppcastEnclosure enclosure{};

    [[nodiscard]] const std::string& displayVersion() const {
        return shortVersion.empty() ? version : shortVersion;
    }
};

namespace appcast_limits {
inline constexpr std::size_t feed = 1u << 20; ///< bytes
inline constexpr std::size_t items = 200;
inline constexpr std::size_t text = 64u << 10; ///< bytes of one text
inline constexpr int depth = 16;
} // namespace appcast_limits

/// Reads a feed, RSS 2.0 with elements and attributes of its own in any namespace, as it arrives. Refuses
/// document types, and with them every entity beyond XML's five, and whatever is beyond `appcast_limits`.
class AppcastReader {
public:
    AppcastReader();
    ~AppcastReader();
    AppcastReader(const AppcastReader&) = delete;
    AppcastReader& operator=(const AppcastReader&) = delete;

    /// The next bytes of the feed. After a failure every further call fails the same way.
    [[nodiscard]] Result<void> add(std::string_view bytes);
    /// The items in the feed's order, once all of it was added. Those without a version or without a
    /// complete enclosure are left out.
    [[nodiscard]] Result<std::vector<AppcastItem>> finish();

private:
    class Parser;
    std::unique_ptr<Parser> parser_;
};

} // namespace glimmerly

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace glimmerly {

/// How far to search for repetitions.
enum class SearchDepth { shallow, deep };

/// Compresses the bands of a picture one by one, each into whole bytes of a deflate stream that stand for
/// themselves and can be put one after the other.
class BandCompressor {
public:
    virtual ~BandCompressor() = default;

    /// Compresses `band` to `out`; answers how many bytes that took, none when they did not fit.
    [[nodiscard]] virtual std::optional<std::size_t>
    compress(std::span<const std::uint8_t> band, std::span<std::uint8_t> out, SearchDepth depth) = 0;
};

/// Room for the outcome of any `bandSize` bytes.
[[nodiscard]] constexpr std::size_t compressedBound(std::size_t bandSize) {
    return bandSize + bandSize / 8 + 1024;
}

/// A gigabyte in a second; the depth makes no difference. None when memory runs out, as below.
[[nodiscard]] std::unique_ptr<BandCompressor> makeQuickCompressor();
/// A hundred megabytes in a second.
[[nodiscard]] std::unique_ptr<BandCompressor> makeCompactCompressor();

} // namespace glimmerly

#pragma once

#include "platform/memory/ByteBuffer.h"

#include <array>
#include <cstdint>
#include <span>

namespace glimmerly {

/// PNG's ways to describe a byte by its neighbours left and above.
enum class PngFilter : std::uint8_t { none = 0, sub = 1, up = 2, average = 3, paeth = 4 };

/// Which filters a row is tried with. The first two find nearly all there is to find in windows and text; the
/// others help photos.
enum class FilterChoice { horizontalAndVertical, all };

/// Filters the rows of a picture from the top down, each with the filter that leaves the least to compress.
class RowFilter {
public:
    RowFilter(std::size_t bytesPerRow, std::size_t bytesPerPixel, FilterChoice choice);

    /// Where the next row's bytes go; `apply` takes them from there.
    [[nodiscard]] std::span<std::uint8_t> nextRow() { return rowOf(current_); }
    /// Writes the filter's number and the filtered row to `out`, `bytesPerRow` + 1 bytes. The row given
    /// before is the one above. Answers an estimate of what is left to compress, in about half bits.
    std::uint64_t apply(std::uint8_t* out);
    /// Takes the row as the one above the next without filtering it.
    void skip() { current_ = 1 - current_; }
    /// Forgets the row above: the next one is the picture's first.
    void restart();

private:
    [[nodiscard]] std::span<std::uint8_t> rowOf(std::size_t which);

    std::size_t bytesPerRow_;
    std::size_t bytesPerPixel_;
    FilterChoice choice_;
    ByteBuffer memory_; // two rows with a pixel of zeros before each, then the candidates
    std::size_t current_ = 0;
};

} // namespace glimmerly

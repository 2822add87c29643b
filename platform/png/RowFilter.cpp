#include "platform/png/RowFilter.h"

#include "platform/png/Simd.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace glimmerly {

namespace {

using Octet = std::uint8_t;

/// One row to filter: `left` is `row` one pixel earlier, `upperLeft` the same of `above`.
struct Neighbourhood {
    const Octet* row;
    const Octet* left;
    const Octet* above;
    const Octet* upperLeft;
    std::size_t size;
};

GLIMMERLY_SIMD void subtractLeft(const Neighbourhood& at, Octet* out) {
    for (std::size_t i = 0; i < at.size; ++i)
        out[i] = static_cast<Octet>(at.row[i] - at.left[i]);
}

GLIMMERLY_SIMD void subtractAbove(const Neighbourhood& at, Octet* out) {
    for (std::size_t i = 0; i < at.size; ++i)
        out[i] = static_cast<Octet>(at.row[i] - at.above[i]);
}

GLIMMERLY_SIMD void subtractAverage(const Neighbourhood& at, Octet* out) {
    for (std::size_t i = 0; i < at.size; ++i)
        out[i] = static_cast<Octet>(at.row[i] - (at.left[i] + at.above[i]) / 2);
}

GLIMMERLY_SIMD void subtractPaeth(const Neighbourhood& at, Octet* out) {
    for (std::size_t i = 0; i < at.size; ++i) {
        const auto a = static_cast<std::int16_t>(at.left[i]);
        const auto b = static_cast<std::int16_t>(at.above[i]);
        const auto c = static_cast<std::int16_t>(at.upperLeft[i]);
        const auto toA = static_cast<std::int16_t>(std::abs(b - c));
        const auto toB = static_cast<std::int16_t>(std::abs(a - c));
        const auto toC = static_cast<std::int16_t>(std::abs(a + b - 2 * c));
        const std::int16_t nearer = toB <= toC ? b : c;
        out[i] = static_cast<Octet>(at.row[i] - (toA <= toB && toA <= toC ? a : nearer));
    }
}

/// Zeros cost nothing, other bytes a flat price and up to 15 for their distance from zero: measured on
/// desktops and photos against the size after compression.
GLIMMERLY_SIMD std::uint64_t cost(const Octet* bytes, std::size_t size) {
    constexpr int flatPrice = 4;
    constexpr int farthest = 15;
    std::uint64_t total = 0;
    constexpr std::size_t stretch = 2048; // within it 16 bits hold the sum of each lane
    for (std::size_t start = 0; start < size; start += stretch) {
        const std::size_t end = std::min(size, start + stretch);
        std::uint32_t sum = 0;
        for (std::size_t i = start; i < end; ++i) {
            const Octet distance = std::min<Octet>(bytes[i], static_cast<Octet>(-bytes[i]));
            sum += static_cast<Octet>(std::min<Octet>(distance, farthest) + (distance != 0 ? flatPrice : 0));
        }
        total += sum;
    }
    return total;
}

} // namespace

RowFilter::RowFilter(std::size_t bytesPerRow, std::size_t bytesPerPixel, FilterChoice choice)
    : bytesPerRow_(bytesPerRow), bytesPerPixel_(bytesPerPixel), choice_(choice),
      memory_(2 * (bytesPerPixel + bytesPerRow) + 4 * bytesPerRow) {
    std::ranges::fill(memory_.span(), std::byte{0});
}

std::span<Octet> RowFilter::rowOf(std::size_t which) {
    return {memory_.octets() + which * (bytesPerPixel_ + bytesPerRow_) + bytesPerPixel_, bytesPerRow_};
}

void RowFilter::restart() {
    std::ranges::fill(rowOf(1 - current_), Octet{0});
}

std::uint64_t RowFilter::apply(Octet* out) {
    using Subtract = void (*)(const Neighbourhood&, Octet*);
    constexpr std::array<Subtract, 4> subtractions{subtractLeft, subtractAbove, subtractAverage,
                                                   subtractPaeth};
    const std::size_t tried = choice_ == FilterChoice::all ? 4 : 2;

    const Octet* row = rowOf(current_).data();
    const Octet* above = rowOf(1 - current_).data();
    const Neighbourhood at{row, row - bytesPerPixel_, above, above - bytesPerPixel_, bytesPerRow_};
    const Octet* best = row;
    std::uint64_t lowest = cost(row, bytesPerRow_);
    *out = static_cast<Octet>(PngFilter::none);
    Octet* candidate = memory_.octets() + 2 * (bytesPerPixel_ + bytesPerRow_);
    for (std::size_t i = 0; i < tried && lowest > 0; ++i, candidate += bytesPerRow_) {
        subtractions[i](at, candidate);
        const std::uint64_t price = cost(candidate, bytesPerRow_);
        if (price < lowest) {
            lowest = price;
            best = candidate;
            *out = static_cast<Octet>(static_cast<std::size_t>(PngFilter::sub) + i);
        }
    }
    std::memcpy(out + 1, best, bytesPerRow_);
    skip();
    return lowest;
}

} // namespace glimmerly

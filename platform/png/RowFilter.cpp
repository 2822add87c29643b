#include "platform/png/RowFilter.h"

#include "platform/png/Simd.h"

#include <algorithm>
#include <cstring>

namespace glimmerly {

namespace {

using Octet = std::uint8_t;

/// The four bytes of each filter's formula: `left` is the row one pixel earlier, `upperLeft` that of the row
/// above. `out` overlaps none of them.
using Subtract = void (*)(const Octet* row, const Octet* left, const Octet* above, const Octet* upperLeft,
                          std::size_t size, Octet* __restrict out);

GLIMMERLY_SIMD void subtractLeft(const Octet* row, const Octet* left, const Octet*, const Octet*,
                                 std::size_t size, Octet* __restrict out) {
    for (std::size_t i = 0; i < size; ++i)
        out[i] = static_cast<Octet>(row[i] - left[i]);
}

GLIMMERLY_SIMD void subtractAbove(const Octet* row, const Octet*, const Octet* above, const Octet*,
                                  std::size_t size, Octet* __restrict out) {
    for (std::size_t i = 0; i < size; ++i)
        out[i] = static_cast<Octet>(row[i] - above[i]);
}

GLIMMERLY_SIMD void subtractAverage(const Octet* row, const Octet* left, const Octet* above, const Octet*,
                                    std::size_t size, Octet* __restrict out) {
    for (std::size_t i = 0; i < size; ++i)
        out[i] = static_cast<Octet>(row[i] - (left[i] + above[i]) / 2);
}

GLIMMERLY_SIMD void subtractPaeth(const Octet* row, const Octet* left, const Octet* above,
                                  const Octet* upperLeft, std::size_t size, Octet* __restrict out) {
    for (std::size_t i = 0; i < size; ++i) {
        const auto a = static_cast<std::int16_t>(left[i]);
        const auto b = static_cast<std::int16_t>(above[i]);
        const auto c = static_cast<std::int16_t>(upperLeft[i]);
        const auto p = static_cast<std::int16_t>(b - c);
        const auto q = static_cast<std::int16_t>(a - c);
        const auto r = static_cast<std::int16_t>(p + q);
        const auto toA = static_cast<std::int16_t>(p < 0 ? -p : p);
        const auto toB = static_cast<std::int16_t>(q < 0 ? -q : q);
        const auto toC = static_cast<std::int16_t>(r < 0 ? -r : r);
        const std::int16_t nearer = toB <= toC ? b : c;
        const std::int16_t predicted = toA <= std::min(toB, toC) ? a : nearer;
        out[i] = static_cast<Octet>(row[i] - predicted);
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
    constexpr std::array<Subtract, 4> subtractions{subtractLeft, subtractAbove, subtractAverage,
                                                   subtractPaeth};
    const std::size_t tried = choice_ == FilterChoice::all ? 4 : 2;

    const Octet* row = rowOf(current_).data();
    const Octet* above = rowOf(1 - current_).data();
    const Octet* best = row;
    std::uint64_t lowest = cost(row, bytesPerRow_);
    *out = static_cast<Octet>(PngFilter::none);
    Octet* candidate = memory_.octets() + 2 * (bytesPerPixel_ + bytesPerRow_);
    for (std::size_t i = 0; i < tried && lowest > 0; ++i, candidate += bytesPerRow_) {
        subtractions[i](row, row - bytesPerPixel_, above, above - bytesPerPixel_, bytesPerRow_, candidate);
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

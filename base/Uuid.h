#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace glimmerly {

/// A 128-bit identifier, random (RFC 9562, version 4) when made by `generate`.
class Uuid {
public:
    using Bytes = std::array<std::uint8_t, 16>;

    constexpr explicit Uuid(const Bytes& bytes) : bytes_(bytes) {}

    /// A new random identifier from the operating system's entropy.
    [[nodiscard]] static Uuid generate();

    /// The canonical 36 characters: upper-case hexadecimal in groups of 8-4-4-4-12.
    [[nodiscard]] std::string toString() const;

    [[nodiscard]] constexpr const Bytes& bytes() const { return bytes_; }
    constexpr auto operator<=>(const Uuid&) const = default;

private:
    Bytes bytes_;
};

} // namespace glimmerly

template <>
struct std::hash<glimmerly::Uuid> {
    std::size_t operator()(const glimmerly::Uuid& id) const noexcept;
};

#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace glimmerly {

/// The public half of the Ed25519 key with which updates are signed.
class UpdateKey {
public:
    static constexpr std::size_t size = 32; ///< bytes

    /// From Base64; none when `text` is no such key.
    [[nodiscard]] static std::optional<UpdateKey> fromBase64(std::string_view text);

    /// True when `signature`, Base64, is one of all of `content` by this key's owner.
    [[nodiscard]] bool hasSigned(std::span<const std::byte> content, std::string_view signature) const;

private:
    std::array<unsigned char, size> key_{};
};

} // namespace glimmerly

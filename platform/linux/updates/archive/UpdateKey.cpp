#include "platform/linux/updates/archive/UpdateKey.h"

#include <sodium.h>

namespace glimmerly {

namespace {

template <std::size_t Size>
std::optional<std::array<unsigned char, Size>> decodeBase64(std::string_view text) {
    std::array<unsigned char, Size> bytes{};
    std::size_t length = 0;
    const int outcome = ::sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr,
                                            &length, nullptr, sodium_base64_VARIANT_ORIGINAL);
    if (outcome != 0 || length != Size)
        return std::nullopt;
    return bytes;
}

} // namespace

std::optional<UpdateKey> UpdateKey::fromBase64(std::string_view text) {
    static_assert(size == crypto_sign_PUBLICKEYBYTES);
    const auto bytes = decodeBase64<size>(text);
    if (!bytes)
        return std::nullopt;
    UpdateKey key;
    key.key_ = *bytes;
    return key;
}

bool UpdateKey::hasSigned(std::span<const std::byte> content, std::string_view signature) const {
    const auto bytes = decodeBase64<crypto_sign_BYTES>(signature);
    if (!bytes || ::sodium_init() < 0)
        return false;
    const auto* data = reinterpret_cast<const unsigned char*>(content.data());
    return ::crypto_sign_verify_detached(bytes->data(), data, content.size(), key_.data()) == 0;
}

} // namespace glimmerly

#include "base/Uuid.h"

#include <cstring>
#include <random>
#include <string_view>

namespace glimmerly {

Uuid Uuid::generate() {
    std::random_device entropy;
    Bytes bytes;
    for (std::size_t i = 0; i < bytes.size(); i += sizeof(std::random_device::result_type)) {
        const auto word = entropy();
        std::memcpy(bytes.data() + i, &word, sizeof word);
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0f) | 0x40); // version 4: random
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3f) | 0x80); // the RFC's own variant
    return Uuid(bytes);
}

std::string Uuid::toString() const {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text += '-';
        text += digits[bytes_[i] >> 4];
        text += digits[bytes_[i] & 0x0f];
    }
    return text;
}

} // namespace glimmerly

std::size_t std::hash<glimmerly::Uuid>::operator()(const glimmerly::Uuid& id) const noexcept {
    const auto& bytes = id.bytes();
    return std::hash<std::string_view>{}({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

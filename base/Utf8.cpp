#include "base/Utf8.h"

#include <array>
#include <cstddef>

namespace glimmerly {

namespace {

/// The sequences of one length: how their first byte is told, and the smallest value that needs them.
struct SequenceKind {
    unsigned char mask;
    unsigned char lead;
    char32_t smallest;
};

constexpr std::array<SequenceKind, 4> sequenceKinds{
    {{0x80, 0x00, 0}, {0xe0, 0xc0, 0x80}, {0xf0, 0xe0, 0x800}, {0xf8, 0xf0, 0x10000}}};

bool isScalarValue(char32_t value) {
    return value <= 0x10ffff && (value < 0xd800 || value > 0xdfff);
}

std::optional<char32_t> decode(std::string_view text, const SequenceKind& kind, std::size_t length) {
    char32_t value = static_cast<unsigned char>(text.front()) & static_cast<unsigned char>(~kind.mask);
    for (const char c : text.substr(1, length - 1)) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xc0) != 0x80)
            return std::nullopt;
        value = value << 6 | (byte & 0x3f);
    }
    if (value < kind.smallest || !isScalarValue(value))
        return std::nullopt;
    return value;
}

} // namespace

std::optional<char32_t> takeUtf8(std::string_view& text) {
    if (text.empty())
        return std::nullopt;
    const auto first = static_cast<unsigned char>(text.front());
    for (std::size_t i = 0; i < sequenceKinds.size(); ++i) {
        const SequenceKind& kind = sequenceKinds[i];
        if ((first & kind.mask) != kind.lead)
            continue;
        const std::size_t length = i + 1;
        if (length > text.size())
            return std::nullopt;
        const auto value = decode(text, kind, length);
        if (value)
            text.remove_prefix(length);
        return value;
    }
    return std::nullopt;
}

bool isUtf8(std::string_view text) {
    while (takeUtf8(text)) {
    }
    return text.empty();
}

std::string wellFormedUtf8(std::string_view text) {
    std::string whole;
    whole.reserve(text.size());
    while (!text.empty()) {
        std::string_view rest = text;
        while (takeUtf8(rest)) {
        }
        whole += text.substr(0, text.size() - rest.size());
        if (!rest.empty()) {
            whole += "\uFFFD";
            rest.remove_prefix(1);
        }
        text = rest;
    }
    return whole;
}

} // namespace glimmerly

#include "base/Whitespace.h"

#include "base/Utf8.h"

namespace glimmerly {

namespace {

bool isWhitespace(char32_t c) {
    return (c >= '\t' && c <= '\r') || c == ' ' || c == 0x85 || c == 0xa0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200a) || c == 0x2028 || c == 0x2029 || c == 0x202f || c == 0x205f ||
           c == 0x3000;
}

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

bool isOneWhitespace(std::string_view character) {
    const auto value = takeUtf8(character);
    return value && character.empty() && isWhitespace(*value);
}

} // namespace

std::string_view trimmedWhitespace(std::string_view text) {
    for (std::string_view rest = text; const auto value = takeUtf8(rest); text = rest) {
        if (!isWhitespace(*value))
            break;
    }
    while (!text.empty()) {
        std::size_t start = text.size() - 1;
        while (start > 0 && isContinuation(text[start]))
            --start;
        if (!isOneWhitespace(text.substr(start)))
            break;
        text.remove_suffix(text.size() - start);
    }
    return text;
}

} // namespace glimmerly

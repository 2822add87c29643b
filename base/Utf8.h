#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace glimmerly {

/// Takes the first Unicode scalar value off `text`; none, and `text` as it was, when it does not start with a
/// well-formed one.
[[nodiscard]] std::optional<char32_t> takeUtf8(std::string_view& text);

/// True when all of `text` is well-formed UTF-8.
[[nodiscard]] bool isUtf8(std::string_view text);

/// `text` with U+FFFD for each byte that is no part of a well-formed character.
[[nodiscard]] std::string wellFormedUtf8(std::string_view text);

} // namespace glimmerly

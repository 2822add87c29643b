#pragma once

#include <string_view>

namespace glimmerly {

/// `text` without the white space and line breaks, those of Unicode included, at its start and end. Bytes
/// that are not UTF-8 are neither.
[[nodiscard]] std::string_view trimmedWhitespace(std::string_view text);

} // namespace glimmerly

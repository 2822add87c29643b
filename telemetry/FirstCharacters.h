#pragma once

#include <string_view>

namespace glimmerly {

/// The start of well-formed `utf8` up to `count` characters as a person sees them: a letter with its
/// combining marks is one.
[[nodiscard]] std::string_view firstCharacters(std::string_view utf8, int count);

} // namespace glimmerly

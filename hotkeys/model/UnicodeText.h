#pragma once

#include <string>
#include <string_view>

namespace glimmerly {

/// The first letter of each word of `utf8` in upper case, the others in lower case, in any script.
[[nodiscard]] std::string capitalized(std::string_view utf8);
[[nodiscard]] std::string lowercased(std::string_view utf8);
/// How many characters a person sees in `utf8`: a letter with its combining marks is one.
[[nodiscard]] int characterCount(std::string_view utf8);

} // namespace glimmerly

#pragma once

#include <string>
#include <string_view>

namespace glimmerly {

/// `json`, a JSON text, with each solidus escaped: how the program writes all its JSON.
[[nodiscard]] std::string withEscapedSolidus(std::string_view json);

} // namespace glimmerly

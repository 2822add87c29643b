#pragma once

#include <compare>
#include <string_view>

namespace glimmerly {

/// Which of two versions is the newer. Numbers count as numbers, of any length; "1.0" and "1.0.0" are the
/// same version; a pre-release ("2.0-rc.1", "2.0b3") is older than its release; what follows a plus sign does
/// not count. A total preorder over every text: one without a number is the oldest there is, 0.
[[nodiscard]] std::weak_ordering compareVersions(std::string_view left, std::string_view right);

} // namespace glimmerly

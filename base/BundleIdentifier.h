#pragma once

#include <string_view>

namespace glimmerly {

/// The program's reverse-domain name: its folders, its desktop file and its queues are named after it.
inline constexpr std::string_view bundleIdentifier = "app.glimmerly.Glimmerly";

} // namespace glimmerly

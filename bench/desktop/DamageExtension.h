#pragma once

#include "tests/support/desktop/XClient.h"

#include <cstdint>

namespace glimmerly::bench {

/// Makes ready what reports painting, and answers the type of its events. Throws where the server lacks it.
[[nodiscard]] std::uint8_t damageEventOf(const XClient& client);

} // namespace glimmerly::bench

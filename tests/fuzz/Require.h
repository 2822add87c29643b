#pragma once

#include <cstdlib>

namespace glimmerly {

/// Ends the fuzzer with the input at hand unless `holds`.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace glimmerly

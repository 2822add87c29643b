#pragma once

#include "base/Error.h"

#include <expected>

namespace glimmerly {

/// A value, or the error that stands in its place.
template <typename T>
using Result = std::expected<T, Error>;

/// `return failure(...)` from a function that answers a `Result`.
[[nodiscard]] inline std::unexpected<Error> failure(Error error) {
    return std::unexpected<Error>(std::move(error));
}

} // namespace glimmerly
